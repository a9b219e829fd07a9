// SPDX-License-Identifier: Apache-2.0
#include "client/search/CompanyLookUp.h"

#include "client/bus/DirectoryService.h"
#include "client/bus/PeerServices.h"
#include "client/text/EventText.h"
#include "platform/records/PlatformEvents.h"

CompanyLookUp::CompanyLookUp(const BusSession &bus)
    : m_bus(bus)
    , m_wait(bus)
{
}

std::optional<Contact> CompanyLookUp::find(const QString &id)
{
    const CompanyService company(m_bus);
    company.requireReachable();
    m_wait.listen({EventName::wsContactProfile}, ModuleName::webServiceManager);
    // With this request id the directory takes the answer for nobody's and stores nothing.
    const QString requestId = DirectoryService::newRequestId();
    company.askProfile(requestId, id);
    ListContact found;
    const EventWait::End end = m_wait.run([&](const QString &, const ListEventArgument &arguments) {
        found = EventValue::of<ListContact>(arguments, ArgumentName::result);
        return EventValue::of<QString>(arguments, ArgumentName::reqId) == requestId;
    });
    if (end == EventWait::End::Interrupted)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("interrupted"));
    if (end == EventWait::End::TimedOut)
        throw CommandFailure(ExitCode::NoAnswer, QStringLiteral("the company directory gave no answer in time"));
    return found.isEmpty() ? std::nullopt : std::optional(found.first());
}

#include "moc_CompanyLookUp.cpp"
