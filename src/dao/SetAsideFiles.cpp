// SPDX-License-Identifier: Apache-2.0
#include "src/dao/SetAsideFiles.h"

#include "platform/framework/KestinLogger.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace {

constexpr int keptCount = 3;
constexpr QLatin1String mark(".set-aside-");
// The journals of either kind, which hold what the file does not have yet or must have again. The index of the log is
// made anew from it.
constexpr std::array journalSuffixes{QLatin1String("-wal"), QLatin1String("-journal")};
constexpr QLatin1String indexSuffix("-shm");

bool isJournal(const QString &name)
{
    return std::any_of(journalSuffixes.cbegin(), journalSuffixes.cend(),
                       [&name](QLatin1String suffix) { return name.endsWith(suffix); });
}

} // namespace

SetAsideFiles::SetAsideFiles(const QString &filePath)
    : m_filePath(filePath)
{
}

std::optional<QString> SetAsideFiles::add()
{
    const QString stamp = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'HHmmsszzz'Z'"));
    const QString target = m_filePath + mark + stamp;
    if (!move(target))
        return std::nullopt;
    QFile::remove(m_filePath + indexSuffix);
    removeBut(keptCount);
    return target;
}

/// All of them or none: a database must not find a journal that is not its own, nor lose the one that is.
bool SetAsideFiles::move(const QString &target) const
{
    QStringList suffixes{QString()};
    for (const QLatin1String suffix : journalSuffixes) {
        if (QFile::exists(m_filePath + suffix))
            suffixes.append(suffix);
    }
    for (qsizetype i = 0; i < suffixes.size(); ++i) {
        if (QFile::rename(m_filePath + suffixes.at(i), target + suffixes.at(i)))
            continue;
        while (--i >= 0)
            QFile::rename(target + suffixes.at(i), m_filePath + suffixes.at(i));
        return false;
    }
    return true;
}

/// Of the databases, the oldest first.
QStringList SetAsideFiles::names() const
{
    const QFileInfo file(m_filePath);
    QStringList found = file.dir().entryList({file.fileName() + mark + QLatin1Char('*')}, QDir::Files, QDir::Name);
    found.removeIf(isJournal);
    return found;
}

void SetAsideFiles::removeBut(int kept)
{
    QDir folder = QFileInfo(m_filePath).dir();
    QStringList oldest = names();
    oldest.resize(std::max<qsizetype>(0, oldest.size() - kept));
    for (const QString &name : oldest) {
        for (const QLatin1String suffix : journalSuffixes)
            folder.remove(name + suffix);
        if (!folder.remove(name))
            KestinLogger::warning("The database %1 could not be removed", folder.filePath(name));
    }
}
