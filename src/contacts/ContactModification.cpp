// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/ContactModification.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/DirectoryCodes.h"
#include "platform/records/LatinText.h"
#include "src/contacts/ContactNews.h"
#include "src/contacts/ListedContacts.h"
#include "src/dao/DaoContact.h"
#include "src/dao/Transaction.h"

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
    Transaction transaction(m_dao.connection());
    if (!store(contact, transaction))
        return ResultCode::writeFailed;
    transaction.afterCommit([this, reqId, before = stored->first(), contact] { tell(reqId, before, contact); });
    return commit(transaction, contact.contactId) ? ResultCode::done : ResultCode::writeFailed;
}

void ContactModification::tell(const QString &reqId, const Contact &before, const Contact &now)
{
    m_fields.noteLocalChange();
    Q_EMIT m_news.contactsUpdated(reqId, {now}, false);
    if (now.photo != before.photo)
        m_news.tellPhotoDropped(before);
    m_news.tellPhotoWanted(now);
}

/// What is the directory's own stays.
void ContactModification::keepOwn(const Contact &stored, Contact &contact)
{
    contact.type = stored.type;
    contact.setPUID(stored.getPUID());
    contact.setLastModificationDate(stored.getLastModificationDate());
}

/// Writes the row and the misc pairs.
bool ContactModification::store(Contact &contact, Transaction &transaction)
{
    if (transaction.isActive() && m_dao.updateContact(contact) &&
        m_dao.misc().replacePairs(contact.contactId, contact.misc)) {
        transaction.afterCommit(
            [id = contact.contactId] { KestinLogger::debug("Local contact of id %1 has been updated", id); });
        return true;
    }
    KestinLogger::error("Local contact of id %1 has not been updated: Database error", contact.contactId);
    return false;
}

bool ContactModification::commit(Transaction &transaction, const QString &contactId)
{
    const bool isCommitted = transaction.commit();
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
    NumbersAhead numbers(m_numbers, contacts, NumbersAhead::Wanted::Canonical);
    Transaction transaction(m_dao.connection());
    for (qsizetype i = 0; i < contacts.size() && transaction.isActive(); ++i) {
        askAhead(numbers);
        Contact contact = contacts.at(i);
        const std::optional<ListContact> stored = m_dao.getContact(contact.contactId);
        if (isRefusedInList(stored))
            continue;
        numbers.fill(i, contact);
        if (!replaceInList(contact, stored->first()))
            continue;
        addresses.insert(stored->first().contactId, stored->first().collaborationId);
        updated.append(contact);
    }
    if (!updated.isEmpty()) {
        transaction.afterCommit([this, reqId, updated = lastOfEachId(updated)] {
            m_fields.noteLocalChange();
            Q_EMIT m_news.contactsUpdated(reqId, updated, false);
        });
    }
    return transaction.commit() ? addresses : QMapQStringQString();
}

bool ContactModification::isRefusedInList(const std::optional<ListContact> &stored)
{
    if (!stored)
        return true;
    if (stored->isEmpty()) {
        KestinLogger::debug("Contact does not exist. Return 2");
        return true;
    }
    const int type = stored->first().type;
    if (isSkippedInLists(type))
        KestinLogger::debug("Contact type is %1, only local contacts can be modified. Return 1", type);
    return isSkippedInLists(type);
}

/// For the numbers of those that are not refused.
void ContactModification::askAhead(NumbersAhead &numbers)
{
    while (const Contact *contact = numbers.next()) {
        const std::optional<int> type = m_dao.typeOf(contact->contactId);
        numbers.settle(type && !isSkippedInLists(*type));
    }
}

bool ContactModification::replaceInList(Contact &contact, const Contact &stored)
{
    keepOwn(stored, contact);
    Transaction transaction(m_dao.connection());
    if (contact.photo != stored.photo)
        transaction.afterCommit([this, stored] { m_news.tellPhotoDropped(stored); });
    return store(contact, transaction) && commit(transaction, contact.contactId);
}
