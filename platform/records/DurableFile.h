// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/OwnedDescriptor.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QString>

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

/// Files that outlast a power cut: what they hold and the folder that names them are both on disk. Any thread.
namespace DurableFile {

/// Makes what was created, renamed or removed in the folder of this path outlast a power cut. False, with errno, when
/// the disk refuses.
[[nodiscard]] inline bool syncFolderOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const OwnedDescriptor descriptor(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor.isOpen())
        return false;
    return ::fsync(descriptor.number()) == 0 || errno == EINVAL; // a file system without such a thing
}

/// Puts a file that is written to its end in the place of its target, for good. Answers why not, when the file could
/// not be opened, written or put there. The target is then the old file, or the new file that a power cut may take
/// back.
[[nodiscard]] inline std::optional<QString> commit(QSaveFile &file)
{
    if (!file.isOpen() || !file.flush() || file.error() != QFileDevice::NoError)
        return file.errorString();
    if (::fsync(file.handle()) != 0) // QSaveFile does not look whether it was
        return qt_error_string();
    if (!file.commit())
        return file.errorString();
    if (!syncFolderOf(file.fileName()))
        return qt_error_string();
    return std::nullopt;
}

} // namespace DurableFile
