// SPDX-License-Identifier: Apache-2.0
// The reads of DaoContact that serve synchronisation and the photo files.
#include "src/dao/DaoContact.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/ContactRow.h"

namespace {

Contact readIds(const Statement::Use &row)
{
    Contact contact;
    contact.contactId = row.text(0);
    contact.setPUID(row.text(1));
    return contact;
}

} // namespace

std::optional<QSet<QString>> DaoContact::getPhotos()
{
    QSet<QString> photos;
    Statement::Use use = m_statements.photos.use();
    if (!use.eachRow([&photos](const Statement::Use &row) { photos.insert(row.text(0)); }))
        return std::nullopt;
    return photos;
}

std::optional<ListContact> DaoContact::getContactsWithUnresizedPhoto(const QString &suffix)
{
    Statement::Use use = m_statements.unresizedPhotos.use(suffix);
    return readContacts(use);
}

bool DaoContact::lockForWriting()
{
    return Statement(m_connection, QStringLiteral("DELETE FROM CONTACT WHERE 0")).use().execute();
}

ContactWalk DaoContact::fullExport()
{
    KestinLogger::debug("DaoContact::fullExport: export all user's contacts");
    return {m_statements.fullExport, ContactRow::readExported, &m_misc};
}

ContactWalk DaoContact::mappingExport()
{
    KestinLogger::debug("DaoContact::mappingExport: export list of <duid,puid>");
    return {m_statements.mappingExport, readIds};
}

ContactWalk DaoContact::getLocalPuids()
{
    return {m_statements.puids, readIds};
}

bool DaoContact::isDirectorySynchronized(const QDateTime &previousExportDate, const QDateTime &lastLocalChangeDate)
{
    Statement::Use use = m_statements.changedSince.use(previousExportDate);
    bool hasChanged = false;
    const bool isKnown = use.eachRow([&hasChanged](const Statement::Use &) { hasChanged = true; });
    // A deletion leaves no newer row behind, only the date of the last change.
    const bool isSynchronized = isKnown && !hasChanged && previousExportDate >= lastLocalChangeDate;
    KestinLogger::debug("DaoContact::isDirectorySynchronized: the Directory is%1 synchronized",
                        isSynchronized ? "" : " not");
    return isSynchronized;
}
