// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/ContactCreation.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/ContactIds.h"
#include "platform/records/DirectoryCodes.h"
#include "platform/records/LatinText.h"
#include "src/contacts/ContactNews.h"
#include "src/contacts/ListedContacts.h"
#include "src/dao/DaoContact.h"
#include "src/dao/Transaction.h"

#include <algorithm>

namespace {

/// The id under which the contact will be stored; nothing when the database makes it.
std::optional<QString> idToBe(const Contact &contact)
{
    if (contact.type == ContactType::Local || contact.type == ContactType::ManagerAssistant)
        return std::nullopt;
    return contact.type == ContactType::DeviceManagement ? ContactIds::ofDeviceManagement(contact.contactId)
                                                         : contact.contactId;
}

} // namespace

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
    if (contact.isAnonymous()) {
        KestinLogger::warning("Attempt to create anonymous contact => refused.");
        if (reqId != RequestId::cached)
            Q_EMIT m_news.anonymousContactRefused();
        return ResultCode::anonymous;
    }
    contact.type = typeOf(reqId);
    if (const int code = refusalOf(contact); code != ResultCode::done)
        return code;
    Transaction transaction(m_dao.connection());
    if (!transaction.isActive() || !makeWay(contact) || (contact.type == ContactType::Cached && !makeRoomInCache()))
        return ResultCode::writeFailed;
    m_numbers.extractDialableNumberList(contact);
    m_numbers.makeCanonicalNumberListWithoutPrefix(contact);
    fillLatinNames(contact);
    if (!store(contact))
        return ResultCode::writeFailed;
    if (reqId != RequestId::deviceManagement)
        transaction.afterCommit([this, reqId, contact] { tell(reqId, contact); });
    return transaction.commit() ? ResultCode::done : ResultCode::writeFailed;
}

void ContactCreation::tell(const QString &reqId, const Contact &created)
{
    m_fields.noteLocalChange();
    Q_EMIT m_news.contactsCreated(reqId, {created});
    m_news.tellPhotoWanted(created);
}

int ContactCreation::typeOf(const QString &reqId)
{
    if (reqId == RequestId::deviceManagement)
        return ContactType::DeviceManagement;
    return reqId == RequestId::cached ? ContactType::Cached : ContactType::Local;
}

/// Asked before the write: what is refused makes none. What cannot be asked is refused as well.
int ContactCreation::refusalOf(const Contact &contact)
{
    if (contact.type == ContactType::Local) {
        const std::optional<int> count = m_dao.nbContact();
        if (!count)
            return ResultCode::writeFailed;
        if (isFull(*count))
            return ResultCode::capacityReached;
    }
    const std::optional<bool> isTaken = isIdTaken(contact);
    if (!isTaken)
        return ResultCode::writeFailed;
    return *isTaken ? ResultCode::wrongType : ResultCode::done;
}

bool ContactCreation::isFull(int count)
{
    KestinLogger::debug("createLocalContact: contact type is LOCAL, maxContacts=%1, currentNbContacts=%2",
                        m_fields.maxContacts, count);
    if (m_fields.maxContacts > count)
        return false;
    KestinLogger::debug("DataBase Full");
    Q_EMIT m_news.databaseFull();
    return true;
}

/// Whether another contact keeps the contact from being stored under its id: two of one id would be deleted together.
/// Nothing when that cannot be read.
std::optional<bool> ContactCreation::isIdTaken(const Contact &contact)
{
    const std::optional<QString> id = idToBe(contact);
    if (!id)
        return false;
    const std::optional<ListContact> stored = m_dao.getContact(*id);
    if (!stored)
        return std::nullopt;
    const auto stays = [](const Contact &other) { return other.type != ContactType::Cached; };
    const bool isReserved = contact.type != ContactType::DeviceManagement && ContactIds::isOfDirectory(*id);
    const bool isTaken = isReserved || std::any_of(stored->cbegin(), stored->cend(), stays);
    if (isTaken)
        KestinLogger::warning("The contact %1 is not created: the id is another contact's", *id);
    return isTaken;
}

/// A cached copy gives way to whoever gets its id. False only when the database refused.
bool ContactCreation::makeWay(const Contact &contact)
{
    const std::optional<QString> id = idToBe(contact);
    return !id || m_deletion.dropCachedCopy(*id);
}

/// A cache that stays full refuses nothing. False only when the database refused.
bool ContactCreation::makeRoomInCache()
{
    const std::optional<int> count = m_dao._nbCachedContactQuery();
    if (!count)
        return false;
    KestinLogger::debug("createLocalContact: contact type is CACHED, maxCachedContacts=%1, "
                        "currentNbCachedContacts=%2",
                        m_fields.comLogSize, *count);
    if (m_fields.comLogSize > *count)
        return true;
    const std::optional<QString> oldest = m_dao.getOldestCachedContactId();
    if (!oldest || oldest->isEmpty())
        return oldest.has_value();
    KestinLogger::debug("createLocalContact: about to delete oldest cached contact, id:%1 to make room for new cached "
                        "contact.",
                        *oldest);
    return m_deletion.dropCachedCopy(*oldest);
}

/// Writes the row and the misc pairs, and drops the cached copies of a local contact.
bool ContactCreation::store(Contact &contact)
{
    if (!m_dao.insertContact(contact, false))
        return false;
    if (contact.type == ContactType::Local && !m_deletion.deleteCachedContactsWithMatchingOfficePhone(contact))
        return false;
    return m_dao.misc().replacePairs(contact.contactId, contact.misc);
}

QMapQStringQString ContactCreation::createLocalContacts(const QString &reqId, const ListContact &contacts)
{
    KestinLogger::debug("KestinDirectory::createLocalContacts called");
    const std::optional<int> count = m_dao.nbContact();
    if (!count)
        return {};
    KestinLogger::debug("Setting:maxContacts=%1, current=%2", m_fields.maxContacts, *count);
    ListContact created;
    int room = m_fields.maxContacts - *count;
    NumbersAhead numbers(m_numbers, contacts, NumbersAhead::Wanted::DialableAndCanonical);
    Transaction transaction(m_dao.connection());
    for (qsizetype i = 0; i < contacts.size() && transaction.isActive(); ++i) {
        askAhead(numbers, room);
        Contact contact = contacts.at(i);
        if (isRefusedInList(contact))
            continue;
        numbers.fill(i, contact);
        if (createInList(contact))
            created.append(std::move(contact));
    }
    const std::optional<ListContact> kept = keptOf(created);
    if (!kept)
        return {};
    if (!kept->isEmpty())
        transaction.afterCommit([this, reqId, created = *kept] { tellList(reqId, created); });
    QMapQStringQString ids;
    for (const Contact &contact : *kept)
        ids.insert(contact.collaborationId, contact.contactId);
    return transaction.commit() ? ids : QMapQStringQString();
}

/// For the numbers of those that are refused only when the database fails; `room` is how many more there can be.
void ContactCreation::askAhead(NumbersAhead &numbers, int &room) const
{
    while (const Contact *contact = numbers.next()) {
        const bool isExpected = !m_fields.readOnlyMode && room > 0 && !idToBe(*contact);
        numbers.settle(isExpected);
        room -= int(isExpected);
    }
}

bool ContactCreation::createInList(Contact &contact)
{
    Transaction transaction(m_dao.connection());
    if (transaction.isActive() && makeWay(contact) && store(contact) && transaction.commit())
        return true;
    KestinLogger::debug("KestinDirectory:createLocalContacts fail to insert contact into database.");
    return false;
}

/// Without the cached copies that later ones of the list have replaced. Nothing when that cannot be read.
std::optional<ListContact> ContactCreation::keptOf(const ListContact &created)
{
    const auto hasOwnId = [](const Contact &contact) { return idToBe(contact).has_value(); };
    if (std::none_of(created.cbegin(), created.cend(), hasOwnId))
        return created; // an id that the database makes is nobody else's
    ListContact kept;
    for (const Contact &contact : lastOfEachId(created)) {
        const bool mayBeGone = contact.type == ContactType::Cached;
        const auto stored = mayBeGone ? m_dao.getContact(contact.contactId) : ListContact{contact};
        if (!stored)
            return std::nullopt;
        if (!stored->isEmpty())
            kept.append(contact);
    }
    return kept;
}

void ContactCreation::tellList(const QString &reqId, const ListContact &created)
{
    if (reqId != RequestId::deviceManagement) {
        for (const Contact &contact : created) {
            if (contact.type == ContactType::Local || contact.type == ContactType::ManagerAssistant)
                m_news.tellPhotoWanted(contact);
        }
        m_fields.noteLocalChange();
    }
    Q_EMIT m_news.contactsCreated(reqId, created);
}

bool ContactCreation::isRefusedInList(const Contact &contact)
{
    if (m_fields.readOnlyMode) {
        KestinLogger::warning("KestinDirectory:createLocalContacts:synchronization mode.Can't add %1",
                              contact.contactId);
        return true;
    }
    // Counted by the store: a contact may also have made room, by taking the place of a copy.
    if (const std::optional<int> count = m_dao.nbContact(); !count || m_fields.maxContacts <= *count) {
        KestinLogger::debug("KestinDirectory::createLocalContacts:DataBase is full.Can't add %1", contact.contactId);
        return true;
    }
    if (isSkippedInLists(contact.type)) {
        KestinLogger::debug("Contact type is %1, only local contacts can be created. Return 1", contact.type);
        return true;
    }
    return isIdTaken(contact).value_or(true);
}

#include "moc_ContactNews.cpp"
