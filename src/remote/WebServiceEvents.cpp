// SPDX-License-Identifier: Apache-2.0
#include "src/remote/WebServiceEvents.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/PlatformEvents.h"

namespace {

QString requestOf(const KestinEvent &event)
{
    return event.argument<QString>(ArgumentName::reqId);
}

void logReceived(const KestinEvent &event)
{
    KestinLogger::debug("Event %1 Received", event.getEvtName());
}

} // namespace

void WebServiceEvents::searchAccepted(const KestinEvent &event)
{
    logReceived(event);
    const QString searchId = requestOf(event);
    KestinLogger::debug("Result status=%1 searchId=%2", event.argument<QString>(ArgumentName::response), searchId);
    Q_EMIT searchStarted(searchId);
}

void WebServiceEvents::nextResults(const KestinEvent &event)
{
    logReceived(event);
    const auto contacts = event.argument<ListContact>(ArgumentName::result);
    const auto status = event.argument<int>(ArgumentName::status);
    Q_EMIT packetReceived(requestOf(event), contacts, status);
    KestinLogger::debug("Event get next results with status [%1] and nb contacts [%2] ", status, contacts.size());
}

void WebServiceEvents::attributes(const KestinEvent &event)
{
    logReceived(event);
    Q_EMIT attributesReceived(event.argument<bool>(ArgumentName::status));
}

void WebServiceEvents::managerAvailability(const KestinEvent &event)
{
    logReceived(event);
    KestinLogger::debug("ICS Availibility is now : %1", event.argument<int>(ArgumentName::status));
    Q_EMIT availabilityChanged();
}

void WebServiceEvents::directoryAvailability(const KestinEvent &event)
{
    logReceived(event);
    Q_EMIT availabilityChanged();
}

void WebServiceEvents::attributeByContactId(const KestinEvent &event)
{
    logReceived(event);
    const QString reqId = requestOf(event);
    const auto value = event.argument<QString>(ArgumentName::result);
    KestinLogger::debug("Attribute is %1 (reqId %2)", value, reqId);
    // The tag is the contact's id with the attribute in brackets behind it.
    Q_EMIT imAddressReceived(reqId.left(reqId.lastIndexOf(QLatin1Char('['))), value);
}

void WebServiceEvents::contactProfile(const KestinEvent &event)
{
    logReceived(event);
    Q_EMIT profileReceived(requestOf(event), event.argument<ListContact>(ArgumentName::result));
}

void WebServiceEvents::operators(const KestinEvent &event)
{
    logReceived(event);
}

void WebServiceEvents::stopSearch(const KestinEvent &event)
{
    logReceived(event);
}

void WebServiceEvents::canonizeNumber(const KestinEvent &event)
{
    logReceived(event);
}

#include "moc_WebServiceEvents.cpp"
