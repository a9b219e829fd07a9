// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinEvent.h"
#include "platform/records/Contact.h"
#include "platform/records/ImpExpStatus.h"

#include <QStringList>

#include <optional>

class KestinModule;

/// The events that the directory raises, each with its arguments in their order. Made by name, then sent.
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

    static DirectoryEvent userPhotoChanged(const QString &fileName);
    static DirectoryEvent importFinished(const ImpExpStatus &status, const QString &cause);
    static DirectoryEvent exportFinished(const ImpExpStatus &status, const QString &cause);

    /// Sends the event, or what of it the bus carries, and logs whether that worked.
    void send(KestinModule &module) const;

private:
    /// The event with less in it, and what the log says of that.
    struct Brief
    {
        KestinEvent event;
        QString with;
    };
    /// What the log tells beside the name: the end of its line, and a line of its own. Most events have none.
    struct Details
    {
        QString status;
        QString cause;
    };

    /// For when a search has found more than the bus carries, the fullest first: its end is told all the same, and what
    /// it found can be read in pages. None for an event that is not of a search.
    QList<Brief> briefs() const;
    bool sendBrief(KestinModule &module) const;
    explicit DirectoryEvent(const QString &name);
    static DirectoryEvent finished(const QString &name, const ImpExpStatus &status, const QString &cause);
    template <typename T>
    DirectoryEvent &with(QLatin1String name, const T &value);
    /// With another value in the place of its last argument.
    KestinEvent endingWith(const QVariant &value) const;

    KestinEvent m_event;
    std::optional<Details> m_details;
};
