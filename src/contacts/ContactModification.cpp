// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/ContactModification.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/DirectoryCodes.h"
#include "src/contacts/ContactWrite.h"
#include "src/contacts/ListedContacts.h"
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
    const std::optional<ListContact> stored = m_dao.getContact(contact.contactId);
    if (!stored)
        return ResultCode::writeFailed;
    if (stored->isEmpty()) {
        KestinLogger::debug("Contact does not exist. Return 2");
        return ResultCode::noSuchContact;
    }
    keepOwn(stored->first(), contact);
    if (contact.type != ContactType::Local && contact.type != ContactType::Cached) {
        KestinLogger::debug("Contact type is %1, only local contacts can be modified. Return 1", contact.type);
        return ResultCode::wrongType;
    }
    if (contact.isAnonymous()) {
        KestinLogger::warning("Attempt to create anonymous contact => refused.");
        if (contact.type != ContactType::Cached)
            Q_EMIT m_news.anonymousContactRefused();
        return ResultCode::anonymous;
    }
    m_numbers.makeCanonicalNumberListWithoutPrefix(contact);
    fillLatinNames(contact);
    ContactWrite write(m_dao, m_news);
    const bool isStored = store(contact, write);
    write.noteChange(m_fields);
    write.announce(&ContactNews::contactsUpdated, reqId, ListContact{contact}, false);
    if (contact.photo != stored->first().photo)
        write.announcePhotoDropped(stored->first());
    write.announcePhotoWanted(contact);
    return isStored && commit(write, contact.contactId) ? ResultCode::done : ResultCode::writeFailed;
}

/// What is the directory's own stays.
void ContactModification::keepOwn(const Contact &stored, Contact &contact)
{
    contact.type = stored.type;
    contact.setPUID(stored.getPUID());
    contact.setLastModificationDate(stored.getLastModificationDate());
}

/// Writes the row and the misc pairs.
bool ContactModification::store(Contact &contact, ContactWrite &write)
{
    if (write.isActive() && m_dao.updateContact(contact) == 0 &&
        m_dao.misc().replacePairs(contact.contactId, contact.misc) == 0) {
        write.logDone("Local contact of id %1 has been updated", contact.contactId);
        return true;
    }
    KestinLogger::error("Local contact of id %1 has not been updated: Database error", contact.contactId);
    return false;
}

bool ContactModification::commit(ContactWrite &write, const QString &contactId)
{
    const bool isCommitted = write.commit();
    if (!isCommitted)
        KestinLogger::error("Local contact of id %1 has not been updated: Database error", contactId);
    return isCommitted;
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
        write.announce(&ContactNews::contactsUpdated, reqId, lastOfEachId(updated), false);
    }
    return write.commit() ? addresses : QMapQStringQString();
}

bool ContactModification::replaceInList(Contact &contact, QMapQStringQString &addresses)
{
    const std::optional<ListContact> stored = m_dao.getContact(contact.contactId);
    if (!stored)
        return false;
    if (stored->isEmpty()) {
        KestinLogger::debug("Contact does not exist. Return 2");
        return false;
    }
    keepOwn(stored->first(), contact);
    if (isSkippedInLists(contact.type)) {
        KestinLogger::debug("Contact type is %1, only local contacts can be modified. Return 1", contact.type);
        return false;
    }
    m_numbers.makeCanonicalNumberListWithoutPrefix(contact);
    ContactWrite one(m_dao, m_news);
    if (contact.photo != stored->first().photo)
        one.announcePhotoDropped(stored->first());
    if (!store(contact, one) || !commit(one, contact.contactId))
        return false;
    addresses.insert(stored->first().contactId, stored->first().collaborationId);
    return true;
}
