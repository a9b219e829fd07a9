// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/ImportRoom.h"

#include "src/dao/DaoContact.h"

#include <QFileInfo>
#include <QSet>

ImportRoom::ImportRoom(DaoContact &dao)
    : m_dao(dao)
{
}

void ImportRoom::addUnnamed(const QStringList &photos)
{
    const QSet<QString> files(photos.cbegin(), photos.cend());
    for (const QString &file : files) {
        if (isNamedBy(file, 0))
            add(QFileInfo(file).size());
    }
}

void ImportRoom::expect(qint64 bytes, const QString &photo)
{
    m_expected += bytes;
    if (!photo.isEmpty())
        ++m_replaced[photo];
}

void ImportRoom::settle(qint64 room)
{
    qint64 replaced = 0;
    for (auto file = m_replaced.cbegin(); file != m_replaced.cend(); ++file) {
        if (isNamedBy(file.key(), file.value()))
            replaced += QFileInfo(file.key()).size();
    }
    m_isTight = room + m_leaving + replaced < m_expected;
    if (!m_isTight)
        add(replaced);
}

qint64 ImportRoom::gainOf(const QString &photo) const
{
    return m_isTight && isNamedBy(photo, 1) ? QFileInfo(photo).size() : 0;
}

bool ImportRoom::isNamedBy(const QString &photo, int contacts) const
{
    return !photo.isEmpty() && m_dao._nbContactsUsingThisPhotoQuery(photo) == contacts;
}
