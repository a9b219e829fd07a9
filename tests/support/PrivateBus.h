// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/KestinBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QString>

/// A message bus of its own, ended with the object. The address is exported as KESTIN_BUS, so programs started later
/// and KestinBus::connect() use it. The records can be sent over it.
class PrivateBus
{
public:
    /// With the limits of a system bus; whoever connects may do everything.
    PrivateBus();
    /// Configured by a file.
    explicit PrivateBus(const QString &configuration);
    ~PrivateBus();

    QString address() const { return m_address; }
    /// A new connection to this bus; `name` tells it from other connections of the process.
    QDBusConnection connection(const QString &name) const;

    /// The answer to a call from the connection of this name, with this thread free to serve others meanwhile.
    QDBusMessage answerTo(const QDBusMessage &call, const QString &name) const;

    static constexpr int limitMs = 20000;

private:
    QProcess m_daemon;
    QString m_address;
};

/// A bus of its own and a client on it that calls modules.
struct ClientBus
{
    QDBusMessage call(const QString &module, const QString &method, const QVariantList &arguments = {}) const
    {
        return connection.call(KestinBus::methodCall(module, method, arguments));
    }

    PrivateBus bus;
    QDBusConnection connection = bus.connection(QStringLiteral("client"));
};
