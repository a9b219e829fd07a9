// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/ContactPreview.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/DirectoryCodes.h"
#include "src/contacts/ContactNews.h"
#include "src/dao/DaoContact.h"
#include "src/dao/Transaction.h"

ContactPreview::ContactPreview(DaoContact &dao, const DirectoryFields &fields, ContactNews &news)
    : m_dao(dao)
    , m_fields(fields)
    , m_news(news)
{
}

int ContactPreview::addContactToPreview(const QString &reqId, const QString &idContact)
{
    KestinLogger::debug("-- Method addContactToPreview called with reqId=[%1] and idContact=[%2] --", reqId, idContact);
    if (m_fields.readOnlyMode) {
        KestinLogger::warning("KestinDirectory:addContactToPreview : user can't add local contact to preview during "
                              "synchronization mode (read only)");
        return ResultCode::readOnly;
    }
    ListContact contacts = m_dao.getContact(idContact).value_or(ListContact());
    if (contacts.isEmpty()) {
        KestinLogger::debug("Contact has not been found. Return -1");
        return ResultCode::notFound;
    }
    if (contacts.first().isPreviewed) {
        KestinLogger::debug("Contact already in preview. Return 4");
        return ResultCode::nothingToDo;
    }
    if (!m_dao.updateContactPreview(idContact, true))
        return ResultCode::writeFailed;
    KestinLogger::debug("Success: Contact added to preview");
    contacts.first().isPreviewed = true;
    if (reqId != RequestId::deviceManagement)
        Q_EMIT m_news.previewCreated(reqId, contacts);
    return ResultCode::done;
}

int ContactPreview::removeContactFromPreview(const QString &reqId, const QString &idContact)
{
    KestinLogger::debug("-- Method removeContactFromPreview called with reqId=[%1] and idContact=[%2] --", reqId,
                        idContact);
    if (m_fields.readOnlyMode) {
        KestinLogger::warning("KestinDirectory:removeContactFromPreview : user can't remove local contact from "
                              "preview during synchronization mode (read only)");
        return ResultCode::readOnly;
    }
    ListContact contacts = m_dao.getContact(idContact).value_or(ListContact());
    if (contacts.isEmpty()) {
        KestinLogger::debug("Contact has not been found. Return -1");
        return ResultCode::notFound;
    }
    if (contacts.first().type == ContactType::ManagerAssistant) {
        KestinLogger::warning("Contact is a manager/assistant");
        return ResultCode::wrongType;
    }
    if (!contacts.first().isPreviewed) {
        KestinLogger::debug("Contact is not in preview. Return 4");
        return ResultCode::nothingToDo;
    }
    if (!m_dao.updateContactPreview(idContact, false))
        return ResultCode::writeFailed;
    KestinLogger::debug("Success: Contact removed from preview");
    contacts.first().isPreviewed = false;
    if (reqId != RequestId::deviceManagement)
        Q_EMIT m_news.previewDeleted(reqId, contacts, true);
    return ResultCode::done;
}

int ContactPreview::updateContactsPreview(const QString &reqId, const QStringList &contactsIds, bool isPreviewed)
{
    if (KestinLogger::isOn(KestinLogger::Debug))
        KestinLogger::debug("KestinDirectory::updateContactsPreview called for: %1",
                            contactsIds.join(QLatin1String(" --")));
    if (m_fields.readOnlyMode) {
        KestinLogger::warning("KestinDirectory:updateContactsPreview : user cannot update local contacts preview "
                              "during synchronization mode (read only)");
        return ResultCode::readOnly;
    }
    Transaction transaction(m_dao.connection());
    if (!transaction.isActive())
        return ResultCode::writeFailed;
    if (!m_dao.updateContactsPreview(contactsIds, isPreviewed))
        return ResultCode::writeFailed;
    if (reqId != RequestId::deviceManagement) {
        const std::optional<ListContact> contacts = m_dao.getContactsById(contactsIds);
        if (!contacts)
            return ResultCode::writeFailed; // undone: nobody could be told of whom
        transaction.afterCommit([this, reqId, contacts = *contacts, isPreviewed] {
            if (isPreviewed)
                Q_EMIT m_news.previewCreated(reqId, contacts);
            else
                Q_EMIT m_news.previewDeleted(reqId, contacts, false);
        });
    }
    return transaction.commit() ? ResultCode::done : ResultCode::writeFailed;
}
