// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "src/remote/RemoteDirectory.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QObject>

#include <chrono>

/// Asks the company directory about single contacts: for the profile of a contact that is to be copied to the phone,
/// and for the instant-messaging address of a contact that the phone does not have. Answers come later.
class RemoteContacts : public QObject
{
    Q_OBJECT

public:
    /// A profile that takes longer than `patience` is copied no more.
    explicit RemoteContacts(RemoteDirectory &directory, std::chrono::milliseconds patience = std::chrono::seconds(60));

    void copyContactToLocal(const QString &idContact);
    void askForImAddress(const QString &idContact);

    /// The profile of a contact, or none, `reqId` being what it was asked for with. A profile that was not asked for,
    /// or came too late, is dropped. A profile that was asked for is answered once.
    void profileReceived(const QString &reqId, const ListContact &contacts);

Q_SIGNALS:
    void copyArrived(const QString &reqId, const Contact &contact);

private:
    RemoteDirectory &m_directory;
    std::chrono::milliseconds m_patience;
    QHash<QString, QDeadlineTimer> m_awaitingCopy; ///< by id
};
