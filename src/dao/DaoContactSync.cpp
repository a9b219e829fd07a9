// SPDX-License-Identifier: Apache-2.0
// The reads of DaoContact that serve synchronisation and the photo files.
#include "src/dao/DaoContact.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/ContactRow.h"

std::optional<QSet<QString>> DaoContact::getPhotos()
{
    QSet<QString> photos;
    Statement::Use use = m_statements.photos.use();
    if (use.execute() != 0)
        return std::nullopt;
    while (use.next())
        photos.insert(use.text(0));
    if (use.hasFailed())
        return std::nullopt;
    return photos;
}

ListContact DaoContact::getContactsWithUnresizedPhoto(const QString &suffix)
{
    Statement::Use use = m_statements.unresizedPhotos.use();
    return readContacts(use.bind(QStringLiteral(":suffix"), suffix));
}

QHash<QString, QString> DaoContact::getLocalPuids()
{
    QHash<QString, QString> puids;
    Statement::Use use = m_statements.puids.use();
    if (use.execute() == 0) {
        while (use.next())
            puids.insert(use.text(0), use.text(1));
    }
    return puids;
}

void DaoContact::fullExport(const TakeContact &take)
{
    KestinLogger::debug("DaoContact::fullExport: export all user's contacts");
    constexpr qsizetype atATime = 250;
    Statement::Use use = m_statements.fullExport.use();
    if (use.execute() != 0)
        return;
    bool isMore = true;
    while (isMore) {
        ListContact contacts;
        while (contacts.size() < atATime && (isMore = use.next()))
            contacts.append(ContactRow::readExported(use));
        m_misc.fill(contacts);
        for (const Contact &contact : std::as_const(contacts))
            take(contact);
    }
}

void DaoContact::mappingExport(const TakeContact &take)
{
    KestinLogger::debug("DaoContact::mappingExport: export list of <duid,puid>");
    Statement::Use use = m_statements.mappingExport.use();
    if (use.execute() != 0)
        return;
    while (use.next()) {
        Contact contact;
        contact.contactId = use.text(0);
        contact.setPUID(use.text(1));
        take(contact);
    }
}

bool DaoContact::isDirectorySynchronized(const QDateTime &previousExportDate, const QDateTime &lastLocalChangeDate)
{
    Statement::Use use = m_statements.changedSince.use();
    use.bind(QStringLiteral(":lastExportDate"), previousExportDate);
    // A deletion leaves no newer row behind, only the date of the last change.
    const bool isSynchronized = use.execute() == 0 && !use.next() && previousExportDate >= lastLocalChangeDate;
    KestinLogger::debug("DaoContact::isDirectorySynchronized: the Directory is%1 synchronized",
                        isSynchronized ? "" : " not");
    return isSynchronized;
}
