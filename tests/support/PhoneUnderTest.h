// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/EventArgument.h"
#include "platform/records/PlatformEvents.h"
#include "tests/support/Person.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Program.h"
#include "tests/support/Test.h"

#include <QDBusPendingCall>
#include <QDBusReply>

/// The service with its peers as processes on a bus of their own, with a data folder of their own, and a client.
class PhoneUnderTest : public QObject
{
    Q_OBJECT

public:
    PhoneUnderTest();

    /// Starts the peers and gives them the dialing rules of a French phone with the outside line "0".
    void startPeers();
    bool startDirectory();

    QDBusMessage callModule(const QString &module, const QString &method, const QVariantList &arguments);
    QDBusMessage call(const QString &method, const QVariantList &arguments)
    {
        return callModule(ModuleName::directory, method, arguments);
    }
    QDBusPendingCall asyncCall(const QString &method, const QVariantList &arguments);
    int code(const QString &method, const QVariantList &arguments)
    {
        return QDBusReply<int>(call(method, arguments)).value();
    }
    ListContact contacts(const QString &method, const QVariantList &arguments)
    {
        return QDBusReply<ListContact>(call(method, arguments)).value();
    }
    int create(const Contact &contact) { return code("createLocalContact", {"r", QVariant::fromValue(contact)}); }
    void set(const QString &key, const QString &value);
    /// Sends an event, from no module.
    void raise(const QString &event, const ListEventArgument &arguments);
    QString databasePath() const;

    PrivateBus bus;
    QTemporaryDir data;
    Program settings{"kestin-settings"};
    Program telephony{"kestin-telephony"};
    Program company;
    Program directory{"kestin-directory"};
    QDBusConnection client;
    QStringList events;                             ///< names of the events seen so far
    QStringList ended;                              ///< ids of the searches whose completion was told
    int nbResults = -1;                             ///< of the search that ended last
    QMap<QString, ListContactSummary> firstResults; ///< of each search, what came before its completion

private Q_SLOTS:
    void note(const QDBusMessage &message);
};
