// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QString>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

/// Files that outlast a power cut: what they hold and the folder that names them are both on disk. Any thread.
namespace DurableFile {

/// Makes what was created, renamed or removed in the folder of this path outlast a power cut. False, with errno, when
/// the disk refuses.
[[nodiscard]] inline bool syncFolderOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool isSynced = ::fsync(descriptor) == 0 || errno == EINVAL; // a file system without such a thing
    const int reason = errno;
    ::close(descriptor);
    errno = reason;
    return isSynced;
}

/// Puts a file that is written to its end in the place of its target, for good. The reason when it could not be opened,
/// written or put there, empty otherwise; the target is then the old one, or the new one that a power cut may take
/// back.
[[nodiscard]] inline QString commit(QSaveFile &file)
{
    if (!file.isOpen() || !file.flush() || file.error() != QFileDevice::NoError)
        return file.errorString();
    if (::fsync(file.handle()) != 0) // QSaveFile does not look whether it was
        return qt_error_string();
    if (!file.commit())
        return file.errorString();
    return syncFolderOf(file.fileName()) ? QString() : qt_error_string();
}

} // namespace DurableFile
