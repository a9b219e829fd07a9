// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/ContactModification.h"

#include "platform/framework/KestinLogger.h"
#include "src/contacts/AnonymousContact.h"
#include "src/contacts/ContactWrite.h"
#include "src/contacts/ResultCode.h"
#include "src/dao/DaoContact.h"
#include "src/dao/LatinText.h"

ContactModification::ContactModification(DaoContact &dao, DirectoryFields &fields, CanonicalNumbers &numbers,
                                         ContactNews &news)
    : m_dao(dao)
    , m_fields(fields)
    , m_numbers(numbers)
    , m_news(news)
{
}

int ContactModification::modifyLocalContact(const QString &reqId, Contact contact)
{
    KestinLogger::debug("-- Method modifyLocalContact called with reqId=[%1] and idContact=[%2] --", reqId,
                        contact.contactId);
    if (m_fields.readOnlyMode) {
        KestinLogger::warning("KestinDirectory:modifyLocalContact : user can't modify local contact during "
                              "synchronization mode (read only)");
        return ResultCode::readOnly;
    }
    const ListContact stored = m_dao.getContact(contact.contactId);
    if (stored.isEmpty()) {
        KestinLogger::debug("Contact does not exist. Return 2");
        return ResultCode::noSuchContact;
    }
    contact.type = stored.first().type;
    if (contact.type != ContactType::Local && contact.type != ContactType::Cached) {
        KestinLogger::debug("Contact type is %1, only local contacts can be modified. Return 1", contact.type);
        return ResultCode::wrongType;
    }
    if (isAnonymous(contact)) {
        KestinLogger::warning("Attempt to create anonymous contact => refused.");
        if (contact.type != ContactType::Cached)
            Q_EMIT m_news.anonymousContactRefused();
        return ResultCode::anonymous;
    }
    m_numbers.makeCanonicalNumberListWithoutPrefix(contact);
    fillLatinNames(contact);
    ContactWrite write(m_dao, m_news);
    write.noteChange(m_fields);
    write.announce(&ContactNews::contactsUpdated, reqId, ListContact{contact}, false);
    if (contact.photo != stored.first().photo)
        write.announcePhotoDropped(stored.first().photo);
    write.announcePhotoWanted(contact);
    return replace(contact, write) ? ResultCode::done : ResultCode::writeFailed;
}

/// Writes the row and the misc pairs, and ends the write.
bool ContactModification::replace(const Contact &contact, ContactWrite &write)
{
    const bool isReplaced = write.isActive() && m_dao.updateContact(contact) == 0 &&
                            m_dao.misc().replacePairs(contact.contactId, contact.misc) == 0 && write.commit();
    if (isReplaced)
        KestinLogger::debug("Local contact of id %1 has been updated", contact.contactId);
    else
        KestinLogger::error("Local contact of id %1 has not been updated: Database error", contact.contactId);
    return isReplaced;
}

QMapQStringQString ContactModification::modifyLocalContacts(const QString &reqId, const ListContact &contacts)
{
    KestinLogger::debug("-- Method modifyLocalContacts called --");
    if (m_fields.readOnlyMode) {
        KestinLogger::warning("KestinDirectory:modifyLocalContacts : user can't modify local contacts during "
                              "synchronization mode (read only)");
        return {};
    }
    QMapQStringQString addresses;
    ListContact updated;
    const NumbersOfMany numbersOfList(m_numbers);
    ContactWrite write(m_dao, m_news);
    for (Contact contact : contacts) {
        if (write.isActive() && replaceInList(contact, addresses))
            updated.append(contact);
    }
    if (!updated.isEmpty()) {
        write.noteChange(m_fields);
        write.announce(&ContactNews::contactsUpdated, reqId, updated, false);
    }
    return write.commit() ? addresses : QMapQStringQString();
}

bool ContactModification::replaceInList(Contact &contact, QMapQStringQString &addresses)
{
    const ListContact stored = m_dao.getContact(contact.contactId);
    if (stored.isEmpty()) {
        KestinLogger::debug("Contact does not exist. Return 2");
        return false;
    }
    contact.type = stored.first().type;
    if (contact.type == ContactType::DeviceManagement || contact.type == 4 || contact.type == 1) {
        KestinLogger::debug("Contact type is %1, only local contacts can be modified. Return 1", contact.type);
        return false;
    }
    m_numbers.makeCanonicalNumberListWithoutPrefix(contact);
    ContactWrite one(m_dao, m_news);
    if (contact.photo != stored.first().photo)
        one.announcePhotoDropped(stored.first().photo);
    if (!replace(contact, one))
        return false;
    addresses.insert(stored.first().contactId, stored.first().collaborationId);
    return true;
}
