// SPDX-License-Identifier: Apache-2.0
#include "client/search/SearchRun.h"

#include "client/bus/PeerServices.h"
#include "client/text/EventText.h"
#include "platform/records/KestinBus.h"

#include <algorithm>

namespace {

constexpr int pageLength = 200;
constexpr std::chrono::seconds briefLimit(2);

} // namespace

SearchRun::SearchRun(const BusSession &bus)
    : m_bus(bus)
    , m_directory(bus)
    , m_wait(bus)
    , m_packets(bus, {EventName::wsNextResults}, ModuleName::webServiceManager)
    , m_searchId(DirectoryService::newRequestId())
{
    m_wait.listen({EventName::searchResults, EventName::searchCompletedByName, EventName::searchCompletedByPhoneNumber},
                  ModuleName::directory);
    connect(&m_packets, &EventStream::received, this,
            [this](const QString &, const ListEventArgument &arguments) { takePacket(arguments); });
}

SearchRun::~SearchRun()
{
    if (m_isStarted)
        purge();
}

void SearchRun::startByName(const QString &name, int announced, bool localOnly)
{
    noteStart(localOnly);
    m_directory.startSearchByName(m_searchId, name, announced, localOnly);
    m_isStarted = true;
}

void SearchRun::startByNumber(const QString &number, bool localOnly)
{
    noteStart(localOnly);
    m_directory.startSearchByNumber(m_searchId, number, localOnly);
    m_isStarted = true;
}

void SearchRun::noteStart(bool localOnly)
{
    m_isLocalOnly = localOnly;
    m_hadCompany = m_bus.isRunning(ModuleName::webServiceManager);
}

EventWait::End SearchRun::wait()
{
    return m_wait.run(
        [this](const QString &eventName, const ListEventArgument &arguments) { return take(eventName, arguments); });
}

bool SearchRun::take(const QString &eventName, const ListEventArgument &arguments)
{
    if (EventValue::of<QString>(arguments, ArgumentName::searchId) != m_searchId)
        return false;
    // What a completion tells may have been told before; then all of it can be fetched.
    if (eventName != EventName::searchResults)
        return true;
    m_announced += EventValue::of<ListContactSummary>(arguments, ArgumentName::listContactSummary);
    Q_EMIT announcedMore();
    return false;
}

void SearchRun::takePacket(const ListEventArgument &arguments)
{
    if (EventValue::of<QString>(arguments, ArgumentName::reqId) == m_searchId)
        m_lastPacket = PacketStatus(EventValue::of<int>(arguments, ArgumentName::status));
}

std::optional<CommandFailure> SearchRun::companyFault() const
{
    if (m_isLocalOnly || m_lastPacket == PacketStatus::Finished)
        return std::nullopt;
    if (m_lastPacket == PacketStatus::TimedOut)
        return CommandFailure(ExitCode::NoAnswer, QStringLiteral("the company directory is too slow"));
    if (m_hadCompany && !m_bus.isRunning(ModuleName::webServiceManager))
        return CommandFailure(ExitCode::NoService,
                              QStringLiteral("the company directory ended before it had answered"));
    const BusSession brief(briefLimit);
    if (const auto fault = CompanyService(brief).fault())
        return fault;
    return CommandFailure(ExitCode::NoAnswer, m_lastPacket
                                                  ? QStringLiteral("the company directory stopped in the middle")
                                                  : QStringLiteral("the company directory gave no answer"));
}

ListContact SearchRun::contacts(int count) const
{
    ListContact contacts;
    for (const ContactSummary &found : results(count))
        contacts.append(m_directory.contactFromSearch(m_searchId, found.contactId));
    return contacts;
}

ListContactSummary SearchRun::results(int count) const
{
    ListContactSummary results;
    while (results.size() < count) {
        const int wanted = std::min(pageLength, count - int(results.size()));
        const ListContactSummary page = m_directory.searchResults(m_searchId, int(results.size()), wanted);
        results += page;
        if (page.size() < wanted)
            break;
    }
    return results;
}

void SearchRun::purge() const
{
    try {
        const BusSession brief(briefLimit);
        DirectoryService(brief).purgeSearch(m_searchId);
    } catch (const CommandFailure &) {
        // The next search drops the results as well, and a directory that has ended keeps none.
    }
}

#include "moc_SearchRun.cpp"
