// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/ContactExport.h"

#include "platform/framework/KestinLogger.h"
#include "platform/impexp/ContactMap_Item.h"
#include "platform/impexp/ImpExp_Exception.h"
#include "platform/impexp/ImpExp_XMLBuilder.h"
#include "src/dao/DaoContact.h"
#include "src/impexp/LocalPhoto.h"
#include "src/impexp/StoreFailure.h"
#include "src/impexp/SyncElements.h"

ContactExport::ContactExport(DaoContact &dao, DirectoryFields &fields, const QString &moduleName, LongWork &longWork)
    : m_dao(dao)
    , m_fields(fields)
    , m_moduleName(moduleName)
    , m_longWork(longWork)
{
}

void ContactExport::exportToXml(const QString &path, int pageSize, bool full, const QString &id,
                                const QString &deviceId, const QDateTime &createdDate,
                                const QDateTime &previousExportDate)
{
    KestinLogger::debug("KestinDirectory::exportToXml called.");
    const std::optional<int> contacts = m_dao.nbLocalUserContacts();
    const std::optional<int> managed = m_dao.nbDMContacts();
    if (!contacts || !managed) {
        Q_EMIT exportFinished(ImpExpStatus::Failure, StoreFailure::unreadable);
        return;
    }
    if (isUpToDate(*contacts, previousExportDate)) {
        Q_EMIT exportFinished(ImpExpStatus::NothingToDo, {});
        return;
    }
    m_work.emplace(write({path, pageSize, full, id, deviceId, createdDate, previousExportDate, *contacts, *managed}));
    m_longWork.start(*m_work);
}

Work ContactExport::write(Order order)
{
    const bool maxContactsChanged = std::exchange(m_fields.maxContactsChanged, false);
    m_skipped = false;
    try {
        ImpExp_XMLBuilder builder(order.deviceId, order.id, order.path, order.pageSize, order.createdDate,
                                  order.contacts, m_fields.maxContacts - order.managed, m_moduleName,
                                  order.previousExportDate);
        co_await putAll(builder, order.full);
        builder.finish();
        Q_EMIT exportFinished(ImpExpStatus::Success, {});
    } catch (const ImpExp_FatalException &exception) {
        // Nobody has been told of the new capacity.
        m_fields.maxContactsChanged = maxContactsChanged || m_fields.maxContactsChanged;
        Q_EMIT exportFinished(ImpExpStatus::Failure, KestinLogger::shown(exception.message()));
    }
    if (m_skipped)
        Q_EMIT contactsNotExported();
}

bool ContactExport::isUpToDate(int localContacts, const QDateTime &previousExportDate)
{
    return !m_fields.maxContactsChanged && localContacts != 0 && previousExportDate.isValid() &&
           m_dao.isDirectorySynchronized(previousExportDate, m_fields.lastLocalChangeDate);
}

Work ContactExport::putAll(ImpExp_XMLBuilder &builder, bool full)
{
    ContactWalk contacts = full ? m_dao.fullExport() : m_dao.mappingExport();
    while (const auto contact = contacts.next()) {
        if (full) {
            const QByteArray photo = LocalPhoto::read(contact->photo).value_or(QByteArray());
            put(builder, SyncElements::itemOf(*contact, photo), contact->contactId);
        } else {
            put(builder, ContactMap_Item(contact->contactId, contact->getPUID()), contact->contactId);
        }
        co_await m_longWork.turn();
    }
    if (!contacts.isAtEnd())
        throw ImpExp_FatalException(StoreFailure::unreadable);
}

void ContactExport::put(ImpExp_XMLBuilder &builder, const ImpExp_Item &item, const QString &contactId)
{
    try {
        builder.putItem(item);
    } catch (const ImpExp_ErrorException &exception) {
        KestinLogger::warning("Can't export contact with id:%1 because %2", contactId, exception.message());
        m_skipped = true;
    }
}

#include "moc_ContactExport.cpp"
