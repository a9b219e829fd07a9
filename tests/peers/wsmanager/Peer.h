// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinEvent.h"
#include "platform/records/Contact.h"
#include "platform/records/PlatformEvents.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Program.h"

#include <optional>

/// The web-service manager as a process, the only one on its bus, and what a directory does with it. Keeps the events
/// that it raises until they are taken.
class Peer : public QObject
{
    Q_OBJECT

public:
    Peer(const ClientBus &bus, const QStringList &arguments);

    QDBusMessage call(const QString &method, const QVariantList &arguments) const
    {
        return m_bus.call(ModuleName::webServiceManager, method, arguments);
    }
    /// The first event of this name with this request id (none: "") that has not been taken, waiting for it.
    std::optional<KestinEvent> event(const QString &name, const QString &reqId = {}, int limitMs = 20000);
    bool hasRight() const;
    /// Waits for the event that the directory became available or no longer is.
    bool waitForAvailability(bool isAvailable);

    struct Packet
    {
        PacketStatus status{}; ///< none of its values: no answer came
        ListContact contacts;
    };
    /// Starts a search; whether it is accepted.
    bool start(const QString &method, const QVariantList &arguments);
    Packet next(const QString &searchId);
    /// All packets of a search, until it ends.
    QList<Packet> all(const QString &searchId);
    /// The contacts with this id.
    ListContact profile(const QString &id);

    Program &program() { return m_program; }

private Q_SLOTS:
    void take(const QString &name, const ListEventArgument &arguments) { m_events.append({name, arguments}); }

private:
    const ClientBus &m_bus;
    QList<KestinEvent> m_events;
    Program m_program;
};
