// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinEvent.h"
#include "platform/records/Contact.h"

#include <QStringList>

/// The events that the directory raises, each with its arguments in their order. Made by name, then published.
class DirectoryEvent
{
public:
    static DirectoryEvent contactsCreated(const QString &reqId, const ListContact &contacts);
    static DirectoryEvent contactsUpdated(const QString &reqId, const ListContact &contacts, bool onlyPhotoHasChanged);
    static DirectoryEvent contactsDeleted(const QString &reqId, const QStringList &contactIds);
    static DirectoryEvent previewCreated(const QString &reqId, const ListContact &contacts);
    static DirectoryEvent previewDeleted(const QString &reqId, const ListContact &contacts, bool requestedByUser);
    static DirectoryEvent databaseFull();
    static DirectoryEvent contentChanged();
    static DirectoryEvent searchResults(const QString &searchId, int nbResults, const ListContactSummary &summaries);
    static DirectoryEvent searchCompletedByName(const QString &searchId, int nbResults,
                                                const ListContactSummary &summaries);
    static DirectoryEvent searchCompletedByPhoneNumber(const QString &searchId, const Contact &contact);
    static DirectoryEvent imAddressResult(const QString &contactId, const QString &imAddress);

    const KestinEvent &event() const { return m_event; }
    /// What the log tells beside the name; empty for most events.
    QString details() const { return m_details; }

private:
    explicit DirectoryEvent(const QString &name);
    template <typename T>
    DirectoryEvent &with(const char *name, const T &value);

    KestinEvent m_event;
    QString m_details;
};
