// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/ContactImport.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/DirectoryCodes.h"
#include "src/dao/Connection.h"
#include "src/dao/DaoContact.h"
#include "src/impexp/ImportRun.h"

ContactImport::ContactImport(DaoContact &dao, DirectoryFields &fields, RemoteCaller &telephony, PhotoFiles &photoFiles,
                             LongWork &longWork)
    : m_dao(dao)
    , m_fields(fields)
    , m_telephony(telephony)
    , m_photoFiles(photoFiles)
    , m_longWork(longWork)
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
    m_work.emplace(run(path));
    m_longWork.start(*m_work);
}

Work ContactImport::run(QString path)
{
    ImportRun::Outcome outcome;
    {
        ImportRun import(m_fields, m_telephony, m_photoFiles, m_longWork);
        co_await import.execute(path);
        outcome = import.outcome();
        if (import.hasMetDamage())
            m_dao.connection().noteDamage();
    }
    m_dao.connection().beginEpoch();

    for (const QString &photo : outcome.droppedPhotos) {
        Q_EMIT photoDropped(photo);
        co_await m_longWork.turn();
    }
    m_fields.importOngoing = false;
    Q_EMIT importFinished(outcome.status, outcome.cause);
    if (outcome.status == ImpExpStatus::Success)
        KestinLogger::info("KestinDirectory::importFromXml : import process succeeded.");
    if (!outcome.deletedIds.isEmpty())
        Q_EMIT contactsDeleted(RequestId::importDeletion, outcome.deletedIds);
    for (const QString &text : outcome.errors) {
        Q_EMIT contactNotImported(text);
        co_await m_longWork.turn();
    }
    if (outcome.isChanged)
        Q_EMIT contentChanged();
}

#include "moc_ContactImport.cpp"
