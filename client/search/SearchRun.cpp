// SPDX-License-Identifier: Apache-2.0
#include "client/search/SearchRun.h"

#include "client/text/EventText.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <algorithm>

namespace {

constexpr int pageLength = 200;
constexpr std::chrono::seconds purgeLimit(2);

} // namespace

SearchRun::SearchRun(const BusSession &bus)
    : m_directory(bus)
    , m_wait(bus)
    , m_searchId(DirectoryService::newRequestId())
{
    m_wait.listen({EventName::searchResults, EventName::searchCompletedByName, EventName::searchCompletedByPhoneNumber},
                  ModuleName::directory);
}

SearchRun::~SearchRun()
{
    if (m_isStarted)
        purge();
}

void SearchRun::startByName(const QString &name, int announced, bool localOnly)
{
    m_directory.startSearchByName(m_searchId, name, announced, localOnly);
    m_isStarted = true;
}

void SearchRun::startByNumber(const QString &number, bool localOnly)
{
    m_directory.startSearchByNumber(m_searchId, number, localOnly);
    m_isStarted = true;
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
    m_match = EventValue::of<Contact>(arguments, ArgumentName::contact);
    // What a completion tells may have been told before; then all of it can be fetched.
    if (eventName != EventName::searchResults)
        return true;
    m_announced += EventValue::of<ListContactSummary>(arguments, ArgumentName::listContactSummary);
    Q_EMIT announcedMore();
    return false;
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
        const BusSession patientForShort(purgeLimit);
        DirectoryService(patientForShort).purgeSearch(m_searchId);
    } catch (const CommandFailure &) {
        // The next search drops the results as well, and a directory that has ended keeps none.
    }
}
