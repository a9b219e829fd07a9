// SPDX-License-Identifier: Apache-2.0
#include "src/dao/SetAsideFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int keptCount = 3;
constexpr QLatin1String mark(".set-aside-");
// The write-ahead log can hold what the file does not have yet; its index is made anew from it.
constexpr QLatin1String logSuffix("-wal");
constexpr QLatin1String indexSuffix("-shm");

} // namespace

SetAsideFiles::SetAsideFiles(const QString &filePath)
    : m_filePath(filePath)
{
}

QString SetAsideFiles::add()
{
    const QString stamp = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'HHmmsszzz'Z'"));
    const QString target = m_filePath + mark + stamp;
    if (!QFile::rename(m_filePath, target))
        return {};
    if (QFile::exists(m_filePath + logSuffix) && !QFile::rename(m_filePath + logSuffix, target + logSuffix)) {
        // The new database must not find a log that is not its own.
        QFile::rename(target, m_filePath);
        return {};
    }
    QFile::remove(m_filePath + indexSuffix);
    removeOldest();
    return target;
}

void SetAsideFiles::removeOldest()
{
    const QFileInfo file(m_filePath);
    QDir folder = file.dir();
    QStringList names = folder.entryList({file.fileName() + mark + QLatin1Char('*')}, QDir::Files, QDir::Name);
    names.removeIf([](const QString &name) { return name.endsWith(logSuffix); });
    while (names.size() > keptCount) {
        const QString oldest = names.takeFirst();
        folder.remove(oldest);
        folder.remove(oldest + logSuffix);
    }
}
