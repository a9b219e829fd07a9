// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "platform/records/KestinBus.h"
#include "tests/peers/PeerBus.h"
#include "tests/peers/wsmanager/EventListener.h"
#include "tests/support/Program.h"

/// The web-service manager as a process, the only one on its bus, and what a directory does with it.
class Peer
{
public:
    Peer(const PeerBus &bus, const QStringList &arguments);

    QDBusMessage call(const QString &method, const QVariantList &arguments) const
    {
        return m_bus.call(ModuleName::webServiceManager, method, arguments);
    }
    bool hasRight() const;
    /// Waits for the event that the directory became available or no longer is.
    bool waitForAvailability(bool isAvailable);

    struct Packet
    {
        int status = 0; ///< 0: no answer came
        ListContact contacts;
    };
    /// Starts a search; the status of the event that answers.
    int start(const QString &method, const QVariantList &arguments);
    Packet next(const QString &searchId);
    /// All packets of a search, until it ends.
    QList<Packet> all(const QString &searchId);

    EventListener &events() { return m_events; }
    Program &program() { return m_program; }

private:
    const PeerBus &m_bus;
    EventListener m_events;
    Program m_program;
};
