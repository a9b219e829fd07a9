// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QMap>

/// The contacts that searches have found. Main thread only.
class SearchResults
{
public:
    /// Of one search: `main` holds what the company directory sent and what the phone found by number, and after a
    /// search by name is completed all of it in the final order; `local` what the phone found by name, until then;
    /// `setAside` those of which only the first name matched.
    struct Lists
    {
        ListContact main;
        ListContact local;
        ListContact setAside;
        bool hasMain = false; ///< something was stored in `main`, be it an empty packet
        /// How many of `main`, from its beginning, are the phone's own found by name: of these only what a summary
        /// holds is here.
        qsizetype summariesInMain = 0;
    };

    Lists &of(const QString &searchId) { return m_lists[searchId]; }
    ListContact main(const QString &searchId) const { return m_lists.value(searchId).main; }
    qsizetype summariesInMain(const QString &searchId) const { return m_lists.value(searchId).summariesInMain; }
    void remove(const QString &searchId) { m_lists.remove(searchId); }
    void clear() { m_lists.clear(); }

    /// Up to `count` summaries from `start` on; to the end when `count` is -1.
    static ListContactSummary summaries(const ListContact &contacts, qsizetype start, qsizetype count);

private:
    QMap<QString, Lists> m_lists;
};
