// SPDX-License-Identifier: Apache-2.0
#include "src/directory/DataRestore.h"

#include "src/dao/Database.h"
#include "src/directory/DirectorySettings.h"
#include "src/directory/OpenDirectory.h"

DataRestore::DataRestore(Database &database, OpenDirectory &open, DirectorySettings &settings)
    : m_database(database)
    , m_open(open)
    , m_settings(settings)
{
}

bool DataRestore::toDefault() const
{
    const QSet<QString> photos = m_open.dao.getPhotos().value_or(QSet<QString>());
    if (!emptyStore())
        return false;
    m_open.contacts.defaultContacts.setDefaultContacts(m_settings.getDefaultContactsSetting());
    for (const QString &photo : photos) // behind them: they may name some
        m_open.photoFiles.removeIfUnused(photo);
    sweepPhotos();
    return true;
}

bool DataRestore::toFactory() const
{
    if (!emptyStore())
        return false;
    m_database.setAsideFiles().clear();
    m_open.photoFiles.sweep();
    m_open.photos.ofUser.remove();
    return true;
}

bool DataRestore::emptyStore() const
{
    // Statements are finished after each use, so none holds the tables.
    const bool isEmptied = m_database.createTables();
    m_open.photos.ofContacts.giveUpUnfitting();
    return isEmptied;
}

void DataRestore::sweepPhotos() const
{
    if (m_database.setAsideFiles().isEmpty()) // one of them may name photos, and be put back
        m_open.photoFiles.sweep();
}
