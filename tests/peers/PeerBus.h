// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/KestinBus.h"
#include "tests/support/PrivateBus.h"

/// A bus of its own and a client on it that calls the peers.
class PeerBus
{
public:
    QDBusMessage call(const QString &module, const QString &method, const QVariantList &arguments = {}) const
    {
        return connection.call(KestinBus::methodCall(module, method, arguments));
    }

    PrivateBus bus;
    QDBusConnection connection = bus.connection(QStringLiteral("client"));
};
