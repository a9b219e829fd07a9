// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QString>
#include <QThread>

/// A worker of a search: its text and id are fixed before it begins, it hands over contacts and ends. Made and deleted
/// on the main thread; `run` and the signals are on its own, so that who lives on the main thread gets them queued,
/// contacts before the end.
class SearchThread : public QThread
{
    Q_OBJECT

public:
    SearchThread(const QString &searchText, const QString &searchId)
        : m_searchText(searchText)
        , m_searchId(searchId)
    {
    }

    /// Begins the search. False when no thread can be had for it.
    virtual bool begin()
    {
        start();
        return isRunning() || isFinished();
    }

Q_SIGNALS:
    void signal_addContactsToMap(const QString &searchId, const ListContact &contacts, bool toLocalList);
    void signal_threadSearchFinished(const QString &searchId);
    /// The search met a part of the file that cannot be right.
    void signal_storeDamaged();

protected:
    QString m_searchText;
    QString m_searchId;
};
