// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/ContactImport.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/DirectoryCodes.h"
#include "src/impexp/ImportRun.h"

ContactImport::ContactImport(DaoContact &dao, DirectoryFields &fields, CanonicalNumbers &numbers,
                             PhotoFiles &photoFiles)
    : m_dao(dao)
    , m_fields(fields)
    , m_numbers(numbers)
    , m_photoFiles(photoFiles)
{
}

void ContactImport::importFromXml(const QString &path)
{
    KestinLogger::debug("KestinDirectory::importFromXml called.");
    if (m_fields.importOngoing) {
        KestinLogger::warning("an import is already on-going!");
        return;
    }
    m_fields.importOngoing = true;
    const ImportRun::Outcome outcome = ImportRun(m_dao, m_fields, m_numbers, m_photoFiles).execute(path);
    m_fields.importOngoing = false;

    for (const QString &photo : outcome.droppedPhotos)
        Q_EMIT photoDropped(photo);
    Q_EMIT importFinished(outcome.status, outcome.cause);
    if (outcome.status == ImpExpStatus::Success)
        KestinLogger::info("KestinDirectory::importFromXml : import process succeeded.");
    if (!outcome.deletedIds.isEmpty())
        Q_EMIT contactsDeleted(RequestId::importDeletion, outcome.deletedIds);
    for (const QString &text : outcome.errors)
        Q_EMIT contactNotImported(text);
    if (outcome.isChanged)
        Q_EMIT contentChanged();
}
