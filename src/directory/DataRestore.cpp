// SPDX-License-Identifier: Apache-2.0
#include "src/directory/DataRestore.h"

#include "src/dao/Database.h"
#include "src/directory/DirectorySettings.h"
#include "src/directory/UseCases.h"

DataRestore::DataRestore(Database &database, UseCases &useCases, DirectorySettings &settings)
    : m_database(database)
    , m_useCases(useCases)
    , m_settings(settings)
{
}

bool DataRestore::toDefault() const
{
    const QSet<QString> photos = m_useCases.dao.getPhotos().value_or(QSet<QString>());
    if (!emptyStore())
        return false;
    m_useCases.defaultContacts.setDefaultContacts(m_settings.getDefaultContactsSetting());
    for (const QString &photo : photos) // behind them: they may name some
        m_useCases.photoFiles.removeIfUnused(photo);
    sweepPhotos();
    return true;
}

bool DataRestore::toFactory() const
{
    if (!emptyStore())
        return false;
    m_database.setAsideFiles().clear();
    m_useCases.photoFiles.sweep();
    m_useCases.userPhoto.remove();
    return true;
}

bool DataRestore::emptyStore() const
{
    // Statements are finished after each use, so none holds the tables.
    const bool isEmptied = m_database.createTables();
    m_useCases.contactPhotos.giveUpUnfitting();
    return isEmptied;
}

void DataRestore::sweepPhotos() const
{
    if (m_database.setAsideFiles().isEmpty()) // one of them may name photos, and be put back
        m_useCases.photoFiles.sweep();
}
