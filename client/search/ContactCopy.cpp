// SPDX-License-Identifier: Apache-2.0
#include "client/search/ContactCopy.h"

#include "client/bus/DirectoryService.h"
#include "client/bus/PeerServices.h"
#include "client/bus/RefusalText.h"
#include "client/text/EventText.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

ContactCopy::ContactCopy(const BusSession &bus)
    : m_bus(bus)
    , m_wait(bus)
{
}

QString ContactCopy::copy(const QString &id)
{
    m_wait.listen({EventName::contactsCreated, EventName::databaseFull}, ModuleName::directory);
    CompanyService(m_bus).requireReachable();
    // The directory itself does not tell that there is no such contact.
    m_wait.listen({EventName::wsContactProfile}, ModuleName::webServiceManager);
    DirectoryService(m_bus).copyToLocal(id);
    const EventWait::End end = m_wait.run([this, &id](const QString &eventName, const ListEventArgument &arguments) {
        return take(id, eventName, arguments);
    });
    if (end == EventWait::End::Interrupted)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("interrupted; the contact may still be copied"));
    if (end == EventWait::End::TimedOut)
        throw CommandFailure(ExitCode::NoAnswer,
                             QStringLiteral("nothing was copied within the limit: the company directory is silent, or "
                                            "the directory did not accept the contact"));
    if (m_refusal)
        throw CommandFailure(ExitCode::Refused, *m_refusal);
    return m_newId;
}

bool ContactCopy::take(const QString &id, const QString &eventName, const ListEventArgument &arguments)
{
    if (eventName == EventName::databaseFull) {
        m_refusal = RefusalText::ofFullDirectory();
        return true;
    }
    if (EventValue::of<QString>(arguments, ArgumentName::reqId) != id)
        return false;
    if (eventName == EventName::contactsCreated) {
        m_newId = EventValue::of<ListContact>(arguments, ArgumentName::contacts).value(0).contactId;
        return true;
    }
    if (EventValue::of<ListContact>(arguments, ArgumentName::result).isEmpty())
        m_refusal = QStringLiteral("the company directory gave no contact with the id %1").arg(id);
    return m_refusal.has_value();
}

#include "moc_ContactCopy.cpp"
