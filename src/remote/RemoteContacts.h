// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "src/remote/RemoteDirectory.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QObject>

#include <chrono>
#include <functional>

/// Asks the company directory about single contacts: for the profile of one that is to be copied to the phone, and for
/// the instant-messaging address of one that the phone does not have. Answers come later. Main thread only.
class RemoteContacts : public QObject
{
    Q_OBJECT

public:
    using LookUp = std::function<ListContact(const QString &contactId)>;

    /// `lookUp` finds a contact on the phone. A profile that takes longer than `patience` is copied no more.
    RemoteContacts(RemoteDirectory &directory, LookUp lookUp,
                   std::chrono::milliseconds patience = std::chrono::seconds(60));

    void copyContactToLocal(const QString &idContact);
    void getImAddressByContactId(const QString &idContact);

    /// The profile of a contact, or none, `reqId` being what it was asked for with. One that was not asked for, or came
    /// too late, is dropped, and one that was is answered once.
    void profileReceived(const QString &reqId, const ListContact &contacts);

Q_SIGNALS:
    void copyArrived(const QString &reqId, const Contact &contact);
    void imAddressFound(const QString &contactId, const QString &imAddress);

private:
    RemoteDirectory &m_directory;
    LookUp m_lookUp;
    std::chrono::milliseconds m_patience;
    QHash<QString, QDeadlineTimer> m_awaitingCopy; ///< by id
};
