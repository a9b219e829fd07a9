// SPDX-License-Identifier: Apache-2.0
#include "src/remote/RemoteContacts.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/WebServiceCalls.h"

RemoteContacts::RemoteContacts(RemoteDirectory &directory, std::chrono::milliseconds patience)
    : m_directory(directory)
    , m_patience(patience)
{
}

void RemoteContacts::copyContactToLocal(const QString &idContact)
{
    KestinLogger::debug("-- Method copyContactToLocal called with idContact=[%1] --", idContact);
    m_awaitingCopy.removeIf(
        [](QHash<QString, QDeadlineTimer>::iterator awaited) { return awaited.value().hasExpired(); });
    if (m_directory.getContactProfile(idContact, idContact).has_value())
        m_awaitingCopy.insert(idContact, QDeadlineTimer(m_patience));
}

void RemoteContacts::askForImAddress(const QString &idContact)
{
    const QString requestTag = idContact + QLatin1Char('[') + WebServiceTerm::imAddress + QLatin1Char(']');
    m_directory.getAttributeTypeByContactId(requestTag, idContact, WebServiceTerm::imAddress);
}

void RemoteContacts::profileReceived(const QString &reqId, const ListContact &contacts)
{
    const QDeadlineTimer limit = m_awaitingCopy.take(reqId); // expired when nobody asked
    if (!limit.hasExpired() && !contacts.isEmpty())
        Q_EMIT copyArrived(reqId, contacts.first());
}

#include "moc_RemoteContacts.cpp"
