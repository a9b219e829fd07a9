// SPDX-License-Identifier: Apache-2.0
#include "src/remote/RemoteContacts.h"

#include "platform/framework/KestinLogger.h"

#include <utility>

RemoteContacts::RemoteContacts(RemoteDirectory &directory, LookUp lookUp)
    : m_directory(directory)
    , m_lookUp(std::move(lookUp))
{
}

void RemoteContacts::copyContactToLocal(const QString &idContact)
{
    KestinLogger::debug("-- Method copyContactToLocal called with idContact=[%1] --", idContact);
    m_directory.getContactProfile(idContact, idContact);
    m_awaitingCopy.append(idContact);
}

void RemoteContacts::getImAddressByContactId(const QString &idContact)
{
    const QString attribute = QStringLiteral("imAddress");
    KestinLogger::debug("Method getImAddressByContactId(%1) called", idContact);
    const ListContact contacts = m_lookUp(idContact);
    if (contacts.isEmpty())
        m_directory.getAttributeTypeByContactId(idContact + QLatin1Char('[') + attribute + QLatin1Char(']'), idContact,
                                                attribute);
    else
        Q_EMIT imAddressFound(idContact, contacts.first().misc.value(attribute));
}

void RemoteContacts::profileReceived(const QString &reqId, const ListContact &contacts)
{
    if (m_awaitingCopy.removeAll(reqId) > 0 && !contacts.isEmpty())
        Q_EMIT copyArrived(reqId, contacts.first());
}
