// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QObject>
#include <QStringList>

/// Tells what happened to contacts. Signals about writes come when these are durable, in the order in which they were
/// made (Transaction::afterCommit).
class ContactNews : public QObject
{
    Q_OBJECT

public:
    /// Tell nothing of a contact without a photo.
    void tellPhotoWanted(const Contact &contact)
    {
        if (!contact.photo.isEmpty())
            Q_EMIT photoWanted(contact.contactId, contact.photo);
    }
    void tellPhotoDropped(const Contact &contact)
    {
        if (!contact.photo.isEmpty())
            Q_EMIT photoDropped(contact.contactId, contact.photo);
    }

Q_SIGNALS:
    void contactsCreated(const QString &reqId, const ListContact &contacts);
    void contactsUpdated(const QString &reqId, const ListContact &contacts, bool onlyPhotoHasChanged);
    void contactsDeleted(const QString &reqId, const QStringList &contactIds);
    void previewCreated(const QString &reqId, const ListContact &contacts);
    void previewDeleted(const QString &reqId, const ListContact &contacts, bool requestedByUser);
    /// A contact has this photo now: if it is an address it is to be fetched.
    void photoWanted(const QString &contactId, const QString &photo);
    /// A contact no longer has this photo: what was under way for it ends, and if nobody else has it, its file may go.
    void photoDropped(const QString &contactId, const QString &photo);
    void databaseFull();
    void anonymousContactRefused();
};
