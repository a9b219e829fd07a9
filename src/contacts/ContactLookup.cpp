// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/ContactLookup.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/ContactIds.h"
#include "platform/records/WebServiceCalls.h"
#include "src/dao/ContactOrder.h"
#include "src/dao/DaoContact.h"

#include <utility>

ListContact ContactLookup::getContactById(const QString &idContact)
{
    KestinLogger::debug("-- Method getContactById called with idContact=[%1] --", idContact);
    // Some stores hold two of one id.
    ListContact contacts = m_dao.getContact(idContact).value_or(ListContact()).mid(0, 1);
    if (contacts.isEmpty()) {
        KestinLogger::warning("The contact of specified ID has not been found");
        return {};
    }
    if (contacts.first().misc.isEmpty())
        KestinLogger::warning("No misc has been found for the specified contact");
    KestinLogger::debug("Success: 1 contact returned");
    return ContactOrder::byName(std::move(contacts));
}

ListContact ContactLookup::getContactsByType(int type)
{
    KestinLogger::debug("-- Method getContactsByType called with type=[%1] --", type);
    return m_dao.getContactByType(type).value_or(ListContact());
}

ListContact ContactLookup::getLocalContacts(const QString &contactPhoneNumber)
{
    KestinLogger::debug("-- Method getLocalContacts called with contactPhoneNumber=[%1] --", contactPhoneNumber);
    ListContact contacts = m_dao.getContactByPhoneNumber(contactPhoneNumber).value_or(ListContact());
    if (contacts.isEmpty())
        return {};
    KestinLogger::debug("Success: %1 local contacts returned with phone number [%2]", contacts.size(),
                        contactPhoneNumber);
    return ContactOrder::byName(std::move(contacts));
}

ListContact ContactLookup::getLocalContacts(int startInd, int length)
{
    KestinLogger::debug("-- Method getLocalContacts called with startInd=[%1] and length=[%2] --", startInd, length);
    ListContact contacts = m_dao.getAllContact(startInd, length).value_or(ListContact());
    if (contacts.isEmpty())
        return {};
    KestinLogger::debug("Success: %1 local contacts returned", contacts.size());
    m_spareMemory.expectAfter(contacts.size());
    return ContactOrder::byName(std::move(contacts));
}

ListContact ContactLookup::getAllContactsInPreview(int startInd, int length)
{
    KestinLogger::debug("-- Method getAllContactsInPreview called with startInd=[%1] and length=[%2] --", startInd,
                        length);
    ListContact contacts = m_dao.getAllContactInPreview(startInd, length).value_or(ListContact());
    if (contacts.isEmpty())
        return {};
    KestinLogger::debug("Success: %1 preview contacts returned", contacts.size());
    m_spareMemory.expectAfter(contacts.size());
    return ContactOrder::byName(std::move(contacts));
}

ListContact ContactLookup::getLocalContactByEmailAddress(const QString &emailAddress)
{
    KestinLogger::debug("-- Method getLocalContactByEmailAddress called with emailAddress=[%1] --", emailAddress);
    return m_dao.getContactsByEmailAddress(emailAddress).value_or(ListContact());
}

ListContact ContactLookup::getLocalContactByIMAddress(const QString &imAddress)
{
    KestinLogger::debug("-- Method getLocalContactByIMAddress called with imAddress=[%1] --", imAddress);
    return m_dao.getContactByIMAddress(imAddress).value_or(ListContact());
}

ListContact ContactLookup::getContactToMerge(const QString &imAddress, const QString &phoneNumber,
                                             const QString &extentionPhone)
{
    KestinLogger::debug("-- Method getContactToMerge called with imAddress=[%1], phoneNumber=[%2] and "
                        "extentionPhone=[%3] --",
                        imAddress, phoneNumber, extentionPhone);
    return m_dao.getContactToMerge(imAddress, phoneNumber, extentionPhone).value_or(ListContact());
}

int ContactLookup::getContactTypeById(const QString &contactId)
{
    KestinLogger::debug("-- Method getContactTypeById called with contactId=[%1] --", contactId);
    if (ContactIds::isRemote(contactId))
        return ContactType::Remote;
    return getContactById(contactId).isEmpty() ? ContactType::Other : ContactType::Local;
}

void ContactLookup::getImAddressByContactId(const QString &idContact)
{
    KestinLogger::debug("Method getImAddressByContactId(%1) called", idContact);
    const ListContact contacts = getContactById(idContact);
    if (contacts.isEmpty())
        Q_EMIT imAddressNotStored(idContact);
    else
        Q_EMIT imAddressFound(idContact, contacts.first().misc.value(WebServiceTerm::imAddress));
}

#include "moc_ContactLookup.cpp"
