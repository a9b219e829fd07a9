// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QString>

/// What a search has found, in the order in which it is paged through: the summaries first.
struct SearchResults
{
    QString searchId;
    ListContactSummary summaries; ///< the phone's own, found by name
    ListContact contacts;         ///< all others

    qsizetype size() const { return summaries.size() + contacts.size(); }
    /// Up to `count` from `start` on; to the end when `count` is -1.
    ListContactSummary page(qsizetype start, qsizetype count) const;

    /// Up to `count` summaries from `start` on; to the end when `count` is -1.
    static ListContactSummary summariesOf(const ListContact &contacts, qsizetype start, qsizetype count);
};
