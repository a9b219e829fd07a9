// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/ContactDeletion.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/DirectoryCodes.h"
#include "src/contacts/ContactNews.h"
#include "src/dao/DaoContact.h"
#include "src/dao/Transaction.h"
#include "src/fields/DirectoryFields.h"

#include <algorithm>

ContactDeletion::ContactDeletion(DaoContact &dao, DirectoryFields &fields, ContactNews &news)
    : m_dao(dao)
    , m_fields(fields)
    , m_news(news)
{
}

int ContactDeletion::deleteLocalContact(const QString &reqId, const QString &idContact)
{
    KestinLogger::debug("-- Method deleteLocalContact called with reqId=[%1] and idContact=[%2] --", reqId, idContact);
    if (m_fields.readOnlyMode) {
        KestinLogger::warning("KestinDirectory:deleteLocalContact : user can't delete local contact during "
                              "synchronization mode (read only)");
        return ResultCode::readOnly;
    }
    const std::optional<ListContact> stored = m_dao.getContact(idContact);
    if (!stored)
        return ResultCode::writeFailed;
    if (stored->isEmpty()) {
        KestinLogger::debug("Local contact of id %1 does not exist", idContact);
        return ResultCode::noSuchContact;
    }
    const int type = stored->first().type;
    if (type == ContactType::Remote || type == ContactType::Other || type == ContactType::ManagerAssistant) {
        KestinLogger::debug("Contact is not local nor cached");
        return ResultCode::wrongType;
    }
    Transaction transaction(m_dao.connection());
    if (!transaction.isActive() || !m_dao.deleteContact(idContact))
        return ResultCode::writeFailed;
    transaction.afterCommit([this, reqId, deleted = stored->first()] { tell(reqId, deleted); });
    return transaction.commit() ? ResultCode::done : ResultCode::writeFailed;
}

void ContactDeletion::tell(const QString &reqId, const Contact &deleted)
{
    if (reqId != RequestId::deviceManagement) {
        KestinLogger::debug("Contact successfully deleted");
        m_fields.noteLocalChange();
        Q_EMIT m_news.contactsDeleted(reqId, {deleted.contactId});
    }
    m_news.tellPhotoDropped(deleted);
}

bool ContactDeletion::dropCachedCopy(const QString &idContact)
{
    const std::optional<ListContact> stored = m_dao.getContact(idContact);
    if (!stored)
        return false;
    const auto isCached = [](const Contact &contact) { return contact.type == ContactType::Cached; };
    if (std::none_of(stored->cbegin(), stored->cend(), isCached))
        return true;
    if (!std::all_of(stored->cbegin(), stored->cend(), isCached)) // some stores hold two of one id
        return m_dao.deleteCachedContact(idContact);
    return deleteLocalContact(RequestId::cached, idContact) != ResultCode::writeFailed;
}

bool ContactDeletion::deleteCachedContactsWithMatchingOfficePhone(const Contact &contact)
{
    KestinLogger::debug("deleteCachedContactsWithMatchingOfficePhone with contact %1", contact.contactId);
    const std::optional<QStringList> ids = m_dao._getCachedContactsWithMatchingOfficePhone(contact);
    return ids && std::all_of(ids->cbegin(), ids->cend(), [this](const QString &id) { return dropCachedCopy(id); });
}
