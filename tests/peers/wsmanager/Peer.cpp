// SPDX-License-Identifier: Apache-2.0
#include "tests/peers/wsmanager/Peer.h"

#include <QTest>

Peer::Peer(const ClientBus &bus, const QStringList &arguments)
    : m_bus(bus)
    , m_program("kestin-wsmanager", arguments)
{
    QDBusConnection(bus.connection)
        .connect(QString(), KestinBus::objectPath(ModuleName::webServiceManager), KestinBus::eventInterface,
                 KestinBus::eventSignal, this, SLOT(take(QString, ListEventArgument)));
    if (!m_program.startAndWaitForName(ModuleName::webServiceManager, bus.connection))
        qFatal("kestin-wsmanager does not come up: %s", qPrintable(m_program.errorOutput()));
}

std::optional<KestinEvent> Peer::event(const QString &name, const QString &reqId, int limitMs)
{
    std::optional<KestinEvent> found;
    (void)QTest::qWaitFor(
        [&] {
            for (qsizetype i = 0; i < m_events.size() && !found; ++i) {
                if (m_events[i].getEvtName() == name && m_events[i].argument<QString>(ArgumentName::reqId) == reqId)
                    found = m_events.takeAt(i);
            }
            return found.has_value();
        },
        limitMs);
    return found;
}

bool Peer::hasRight() const
{
    return call("getServiceRight", {"IcsUda"}).arguments().value(0).toBool();
}

bool Peer::waitForAvailability(bool isAvailable)
{
    const std::optional<KestinEvent> told = event(EventName::wsDirectoryAvailability);
    return told && told->argument<int>(ArgumentName::status) == int(isAvailable) && hasRight() == isAvailable;
}

bool Peer::start(const QString &method, const QVariantList &arguments)
{
    call(method, arguments);
    const QString name = method == "udaSearchByFullName" ? EventName::wsSearchByFullName : EventName::wsSearch;
    const std::optional<KestinEvent> answer = event(name, arguments.value(0).toString());
    return answer && answer->argument<int>(ArgumentName::status) == 1;
}

Peer::Packet Peer::next(const QString &searchId)
{
    call("udaGetNextResults", {searchId});
    const std::optional<KestinEvent> answer = event(EventName::wsNextResults, searchId);
    if (!answer)
        return {};
    return {PacketStatus(answer->argument<int>(ArgumentName::status)),
            answer->argument<ListContact>(ArgumentName::result)};
}

QList<Peer::Packet> Peer::all(const QString &searchId)
{
    QList<Packet> packets;
    do
        packets.append(next(searchId));
    while (packets.last().status == PacketStatus::More);
    return packets;
}

ListContact Peer::profile(const QString &id)
{
    call("udaGetContactProfile", {id, id});
    const std::optional<KestinEvent> answer = event(EventName::wsContactProfile, id);
    return answer ? answer->argument<ListContact>(ArgumentName::result) : ListContact(99);
}

#include "moc_Peer.cpp"
