// SPDX-License-Identifier: Apache-2.0
#include "client/recover/PrivateCopy.h"

#include "platform/records/RegularFile.h"

#include <QDir>
#include <QStorageInfo>

#include <array>
#include <utility>

namespace {

// What the file does not have yet, or must have again.
constexpr std::array journalSuffixes{QLatin1String("-wal"), QLatin1String("-journal")};
constexpr qint64 mebibyte = 1024 * 1024;

/// Of a file and its journals, what changes with them.
QList<std::pair<qint64, QDateTime>> stateOf(const QString &path)
{
    QList<std::pair<qint64, QDateTime>> state;
    for (const QString &suffix : {QString(), QString(journalSuffixes[0]), QString(journalSuffixes[1])}) {
        const QFileInfo file(path + suffix);
        state.append({file.exists() ? file.size() : -1, file.lastModified()});
    }
    return state;
}

} // namespace

PrivateCopy::PrivateCopy(const QString &path, RecoveryProgress &progress)
    : m_name(path)
    , m_progress(progress)
    , m_folder(QDir::temp().filePath(QStringLiteral("kestin-dir-XXXXXX")))
{
    if (!m_folder.isValid())
        throw writeFailure(m_folder.errorString());
    // The journals lie where the file is, not where a link to it is.
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const QString source = canonical.isEmpty() ? path : canonical;
    constexpr int mostTries = 5;
    for (int tries = 0; tries < mostTries; ++tries) {
        const auto before = stateOf(source);
        copyAll(source);
        if (stateOf(source) == before)
            return;
    }
    throw CommandFailure(ExitCode::FileError,
                         QStringLiteral("%1 changes all the time: another program writes to it").arg(path));
}

void PrivateCopy::copyAll(const QString &source)
{
    qint64 size = QFileInfo(source).size();
    for (const QLatin1String suffix : journalSuffixes)
        size += 2 * QFileInfo(source + suffix).size(); // what is in them comes into the file
    if (QFileInfo(source).isFile())
        expectRoom(size);
    copy(source, {});
    for (const QLatin1String suffix : journalSuffixes) {
        QFile::remove(path() + suffix);
        if (QFileInfo::exists(source + suffix))
            copy(source, suffix);
    }
}

void PrivateCopy::copy(const QString &source, const QString &suffix)
{
    const auto failure = [&](const QString &reason) {
        return CommandFailure(ExitCode::FileError,
                              QStringLiteral("%1 cannot be read: %2").arg(m_name + suffix, reason));
    };
    QFile from(source + suffix);
    if (const auto reason = RegularFile::open(from))
        throw failure(*reason);
    if (from.size() == 0 && suffix.isEmpty())
        throw CommandFailure(ExitCode::FileError, QStringLiteral("%1 is empty").arg(m_name));
    QFile to(path() + suffix);
    if (!to.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw writeFailure(to.errorString());
    const qint64 size = from.size();
    while (from.pos() < size) {
        const QByteArray bytes = from.read(std::min(mebibyte, size - from.pos()));
        if (from.error() != QFileDevice::NoError)
            throw failure(from.errorString());
        if (bytes.isEmpty())
            break; // it has become shorter; the state tells
        if (to.write(bytes) != bytes.size())
            throw writeFailure(to.errorString());
        m_progress.advance(from.pos(), size);
    }
    if (!to.flush())
        throw writeFailure(to.errorString());
}

void PrivateCopy::expectRoom(qint64 size) const
{
    const qint64 room = QStorageInfo(m_folder.path()).bytesAvailable();
    if (room >= 0 && room < size)
        throw writeFailure(QStringLiteral("it takes %1 MiB, and there is room for %2 MiB")
                               .arg(size / mebibyte + 1)
                               .arg(room / mebibyte));
}

CommandFailure PrivateCopy::writeFailure(const QString &reason) const
{
    return {ExitCode::FileError,
            QStringLiteral("%1 cannot be copied to %2, and only a copy is worked on: %3 (TMPDIR names another folder)")
                .arg(m_name, QDir::tempPath(), reason)};
}
