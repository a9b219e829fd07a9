// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/KestinBus.h"
#include "tests/support/PrivateBus.h"

#include <QDBusMessage>

/// A bus of its own and a client on it that calls the peers.
class PeerBus
{
public:
    QDBusMessage call(const QString &module, const QString &method, const QVariantList &arguments = {}) const
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(KestinBus::serviceName(module), KestinBus::objectPath(module),
                                           QLatin1String(KestinBus::moduleInterface), method);
        message.setArguments(arguments);
        return connection.call(message);
    }

    PrivateBus bus;
    QDBusConnection connection = bus.connection(QStringLiteral("client"));
};
