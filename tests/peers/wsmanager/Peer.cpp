// SPDX-License-Identifier: Apache-2.0
#include "tests/peers/wsmanager/Peer.h"

#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

Peer::Peer(const PeerBus &bus, const QStringList &arguments)
    : m_bus(bus)
    , m_events(m_bus.connection, ModuleName::webServiceManager)
    , m_program(QStringLiteral("kestin-wsmanager"), arguments)
{
    registerDBusContact();
    if (!m_program.startAndWaitForName(ModuleName::webServiceManager, m_bus.connection))
        qFatal("kestin-wsmanager does not come up: %s", qPrintable(m_program.errorOutput()));
}

bool Peer::hasRight() const
{
    return call(QStringLiteral("getServiceRight"), {QStringLiteral("IcsUda")}).arguments().value(0).toBool();
}

bool Peer::waitForAvailability(bool isAvailable)
{
    const std::optional<KestinEvent> event = m_events.next(EventName::wsDirectoryAvailability);
    return event && event->argument<int>(ArgumentName::status) == int(isAvailable) && hasRight() == isAvailable;
}

int Peer::start(const QString &method, const QVariantList &arguments)
{
    call(method, arguments);
    const bool isByName = method == QLatin1String("udaSearchByFullName");
    const QString name = isByName ? EventName::wsSearchByFullName : EventName::wsSearch;
    const std::optional<KestinEvent> event = m_events.next(name, arguments.value(0).toString());
    return event ? event->argument<int>(ArgumentName::status) : -1;
}

Peer::Packet Peer::next(const QString &searchId)
{
    call(QStringLiteral("udaGetNextResults"), {searchId});
    const std::optional<KestinEvent> event = m_events.next(EventName::wsNextResults, searchId);
    if (!event)
        return {};
    return {event->argument<int>(ArgumentName::status), event->argument<ListContact>(ArgumentName::result)};
}

QList<Peer::Packet> Peer::all(const QString &searchId)
{
    QList<Packet> packets;
    do
        packets.append(next(searchId));
    while (packets.last().status == 1);
    return packets;
}
