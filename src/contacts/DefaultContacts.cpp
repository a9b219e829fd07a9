// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/DefaultContacts.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "platform/records/DirectoryCodes.h"
#include "src/contacts/ContactNews.h"
#include "src/contacts/DefaultContactsText.h"
#include "src/dao/DaoContact.h"
#include "src/dao/Transaction.h"

DefaultContacts::DefaultContacts(DaoContact &dao, CanonicalNumbers &numbers, ContactCreation &creation,
                                 ContactDeletion &deletion, ContactNews &news)
    : m_dao(dao)
    , m_numbers(numbers)
    , m_creation(creation)
    , m_deletion(deletion)
    , m_news(news)
{
}

void DefaultContacts::setDefaultContacts(const QString &value)
{
    KestinLogger::debug("Create contacts from setting : %1", AddressText::withoutUserInfo(value));
    Transaction transaction(m_dao.connection());
    const bool isBegun = transaction.isActive(); // later a statement that failed would look the same
    if (!isBegun)
        KestinLogger::error("KestinDirectory::setDefaultcontacts : error while trying to begin a unique transaction "
                            "during the import process on the database.");
    const ListContact wanted = DefaultContactsText::contacts(value);
    const QString reqId = RequestId::deviceManagement;
    const std::optional<ListContact> stored = m_dao.getContactByType(ContactType::DeviceManagement);
    if (!stored)
        return;
    if (const QStringList removed = remove(*stored); !removed.isEmpty())
        transaction.afterCommit([this, reqId, removed] { Q_EMIT m_news.contactsDeleted(reqId, removed); });
    if (create(wanted)) {
        const std::optional<ListContact> created = m_dao.getContactByType(ContactType::DeviceManagement);
        if (!created)
            return;
        transaction.afterCommit([this, reqId, created = *created] { Q_EMIT m_news.contactsCreated(reqId, created); });
    }
    if (isBegun && !transaction.commit())
        KestinLogger::error("KestinDirectory::setDefaultContacts : error while trying to commit a unique transaction "
                            "during the import process to the database.");
}

/// The ids of those that are gone.
QStringList DefaultContacts::remove(const ListContact &contacts)
{
    QStringList removed;
    for (const Contact &contact : contacts) {
        if (m_deletion.deleteLocalContact(RequestId::deviceManagement, contact.contactId) == ResultCode::done)
            removed.append(contact.contactId);
    }
    return removed;
}

/// Whether there is one more than before.
bool DefaultContacts::create(const ListContact &contacts)
{
    const NumbersOfMany numbersOfSet(m_numbers);
    bool isAnyCreated = false;
    for (const Contact &contact : contacts)
        isAnyCreated |= m_creation.createLocalContact(RequestId::deviceManagement, contact) == ResultCode::done;
    return isAnyCreated;
}
