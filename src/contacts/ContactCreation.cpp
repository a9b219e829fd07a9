// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/ContactCreation.h"

#include "platform/framework/KestinLogger.h"
#include "src/contacts/AnonymousContact.h"
#include "src/contacts/ContactWrite.h"
#include "src/contacts/RequestId.h"
#include "src/contacts/ResultCode.h"
#include "src/dao/DaoContact.h"
#include "src/dao/LatinText.h"

ContactCreation::ContactCreation(DaoContact &dao, DirectoryFields &fields, CanonicalNumbers &numbers,
                                 ContactDeletion &deletion, ContactNews &news)
    : m_dao(dao)
    , m_fields(fields)
    , m_numbers(numbers)
    , m_deletion(deletion)
    , m_news(news)
{
}

int ContactCreation::createLocalContact(const QString &reqId, Contact contact)
{
    KestinLogger::debug("******CreateLocalContact******");
    if (m_fields.readOnlyMode) {
        KestinLogger::warning("KestinDirectory:createLocalContact : user can't create local contact during "
                              "synchronization mode (read only)");
        return ResultCode::readOnly;
    }
    if (isAnonymous(contact)) {
        KestinLogger::warning("Attempt to create anonymous contact => refused.");
        if (reqId != RequestId::cached)
            Q_EMIT m_news.anonymousContactRefused();
        return ResultCode::anonymous;
    }
    ContactWrite write(m_dao, m_news);
    if (!write.isActive())
        return ResultCode::writeFailed;
    if (const std::optional<int> refusal = classify(reqId, contact))
        return *refusal;
    m_numbers.extractDialableNumberList(contact);
    m_numbers.makeCanonicalNumberListWithoutPrefix(contact);
    fillLatinNames(contact);
    if (const int code = store(contact); code != ResultCode::done)
        return code;
    if (reqId != RequestId::deviceManagement) {
        write.noteChange(m_fields);
        write.announce(&ContactNews::contactsCreated, reqId, ListContact{contact});
        write.announcePhotoWanted(contact);
    }
    return write.commit() ? ResultCode::done : ResultCode::writeFailed;
}

/// Gives the contact its type and makes room for it; the code of the refusal when there is none.
std::optional<int> ContactCreation::classify(const QString &reqId, Contact &contact)
{
    if (reqId == RequestId::deviceManagement) {
        contact.type = ContactType::DeviceManagement;
        return std::nullopt;
    }
    if (reqId == RequestId::cached) {
        contact.type = ContactType::Cached;
        makeRoomInCache();
        return std::nullopt;
    }
    contact.type = ContactType::Local;
    const int count = m_dao.nbContact();
    KestinLogger::debug("createLocalContact: contact type is LOCAL, maxContacts=%1, currentNbContacts=%2",
                        m_fields.maxContacts, count);
    if (m_fields.maxContacts > count)
        return std::nullopt;
    KestinLogger::debug("DataBase Full");
    Q_EMIT m_news.databaseFull();
    return ResultCode::capacityReached;
}

void ContactCreation::makeRoomInCache()
{
    const int count = m_dao._nbCachedContactQuery();
    KestinLogger::debug("createLocalContact: contact type is CACHED, maxCachedContacts=%1, "
                        "currentNbCachedContacts=%2",
                        m_fields.comLogSize, count);
    if (m_fields.comLogSize > count)
        return;
    const QString oldest = m_dao.getOldestCachedContactId();
    if (oldest.isEmpty())
        return;
    KestinLogger::debug("createLocalContact: about to delete oldest cached contact, id:%1 to make room for new cached "
                        "contact.",
                        oldest);
    // A cache that stays full refuses nothing, so what this answers does not matter.
    m_deletion.deleteLocalContact(RequestId::cached, oldest);
}

/// Writes the row and the misc pairs, and drops the cached copies of a local contact.
int ContactCreation::store(Contact &contact)
{
    if (const int code = m_dao.insertContact(contact, false); code != 0)
        return code;
    if (contact.type == ContactType::Local && m_deletion.deleteCachedContactsWithMatchingOfficePhone(contact) != 0)
        return ResultCode::writeFailed;
    return m_dao.misc().replacePairs(contact.contactId, contact.misc);
}

QMapQStringQString ContactCreation::createLocalContacts(const QString &reqId, const ListContact &contacts)
{
    KestinLogger::debug("KestinDirectory::createLocalContacts called");
    int count = m_dao.nbContact();
    KestinLogger::debug("Setting:maxContacts=%1, current=%2", m_fields.maxContacts, count);
    QMapQStringQString ids;
    ListContact created;
    const NumbersOfMany numbersOfList(m_numbers);
    ContactWrite write(m_dao, m_news);
    for (Contact contact : contacts) {
        if (!write.isActive() || isRefusedInList(contact, count))
            continue;
        m_numbers.extractDialableNumberList(contact);
        m_numbers.makeCanonicalNumberListWithoutPrefix(contact);
        ContactWrite one(m_dao, m_news);
        if (!one.isActive() || store(contact) != 0 || !one.commit()) {
            KestinLogger::debug("KestinDirectory:createLocalContacts fail to insert contact into database.");
            continue;
        }
        ids.insert(contact.collaborationId, contact.contactId);
        created.append(contact);
        if (reqId != RequestId::deviceManagement &&
            (contact.type == ContactType::Local || contact.type == ContactType::ManagerAssistant))
            write.announcePhotoWanted(contact);
        ++count;
    }
    if (!created.isEmpty()) {
        if (reqId != RequestId::deviceManagement)
            write.noteChange(m_fields);
        write.announce(&ContactNews::contactsCreated, reqId, created);
    }
    return write.commit() ? ids : QMapQStringQString();
}

bool ContactCreation::isRefusedInList(const Contact &contact, int count) const
{
    if (m_fields.readOnlyMode) {
        KestinLogger::warning("KestinDirectory:createLocalContacts:synchronization mode.Can't add %1",
                              contact.contactId);
        return true;
    }
    if (m_fields.maxContacts <= count) {
        KestinLogger::debug("KestinDirectory::createLocalContacts:DataBase is full.Can't add %1", contact.contactId);
        return true;
    }
    if (contact.type == ContactType::DeviceManagement || contact.type == 4 || contact.type == 1) {
        KestinLogger::debug("Contact type is %1, only local contacts can be created. Return 1", contact.type);
        return true;
    }
    return false;
}
