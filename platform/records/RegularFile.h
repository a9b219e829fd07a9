// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/OwnedDescriptor.h"

#include <QFile>
#include <QFileInfo>
#include <QString>

#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

/// Files whose names come from somebody else. Any thread.
namespace RegularFile {

/// Opens the named file for reading. Answers why not, when that fails. Anything but a regular file is refused: a pipe
/// would be waited for, a device has no end, and the opening of a device can do something already. QFile forgets the
/// name of what it gets open.
[[nodiscard]] inline std::optional<QString> open(QFile &file, QIODevice::OpenMode mode = QIODevice::ReadOnly)
{
    const QString notRegular = QStringLiteral("it is not a regular file");
    const QFileInfo info(file.fileName());
    if (info.exists() && !info.isFile())
        return notRegular;
    const QByteArray name = QFile::encodeName(file.fileName());
    // Another file may have come in its place.
    OwnedDescriptor descriptor(::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!descriptor.isOpen())
        return qt_error_string();
    struct stat status = {};
    if (::fstat(descriptor.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return notRegular;
    if (!file.open(descriptor.number(), mode, QFileDevice::AutoCloseHandle))
        return file.errorString();
    descriptor.release(); // the file's from now on
    return std::nullopt;
}

} // namespace RegularFile
