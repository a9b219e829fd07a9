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

ContactExport::ContactExport(DaoContact &dao, DirectoryFields &fields, const QString &moduleName)
    : m_dao(dao)
    , m_fields(fields)
    , m_moduleName(moduleName)
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
    const bool maxContactsChanged = std::exchange(m_fields.maxContactsChanged, false);
    m_skipped = false;
    try {
        ImpExp_XMLBuilder builder(deviceId, id, path, pageSize, createdDate, *contacts, m_fields.maxContacts - *managed,
                                  m_moduleName, previousExportDate);
        write(builder, full);
        builder.finish();
        Q_EMIT exportFinished(ImpExpStatus::Success, {});
    } catch (const ImpExp_FatalException &exception) {
        // Nobody has been told of the new capacity.
        m_fields.maxContactsChanged = maxContactsChanged;
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

void ContactExport::write(ImpExp_XMLBuilder &builder, bool full)
{
    const auto putWhole = [&](const Contact &contact) {
        const QByteArray photo = LocalPhoto::read(contact.photo).value_or(QByteArray());
        put(builder, SyncElements::itemOf(contact, photo), contact.contactId);
    };
    const auto putIds = [&](const Contact &contact) {
        put(builder, ContactMap_Item(contact.contactId, contact.getPUID()), contact.contactId);
    };
    if (!(full ? m_dao.fullExport(putWhole) : m_dao.mappingExport(putIds)))
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
