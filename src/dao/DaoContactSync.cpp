// SPDX-License-Identifier: Apache-2.0
// The reads of DaoContact that serve synchronisation and the photo files.
#include "src/dao/DaoContact.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/ContactRow.h"

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

std::optional<QHash<QString, QString>> DaoContact::getLocalPuids()
{
    QHash<QString, QString> puids;
    Statement::Use use = m_statements.puids.use();
    if (!use.eachRow([&puids](const Statement::Use &row) { puids.insert(row.text(0), row.text(1)); }))
        return std::nullopt;
    return puids;
}

bool DaoContact::fullExport(const TakeContact &take)
{
    KestinLogger::debug("DaoContact::fullExport: export all user's contacts");
    bool areComplete = true;
    Statement::Use use = m_statements.fullExport.use();
    const bool areAll = use.eachRow([&](const Statement::Use &row) {
        Contact contact = ContactRow::readExported(row);
        areComplete = areComplete && m_misc.fill(contact);
        if (areComplete)
            take(contact);
    });
    return areAll && areComplete;
}

bool DaoContact::mappingExport(const TakeContact &take)
{
    KestinLogger::debug("DaoContact::mappingExport: export list of <duid,puid>");
    Statement::Use use = m_statements.mappingExport.use();
    return use.eachRow([&take](const Statement::Use &row) {
        Contact contact;
        contact.contactId = row.text(0);
        contact.setPUID(row.text(1));
        take(contact);
    });
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
