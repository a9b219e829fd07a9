// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>
#include <QFileInfo>
#include <QString>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// Files whose names come from somebody else. Any thread.
namespace RegularFile {

/// Opens the named file for reading. The reason when that fails, empty otherwise. Anything but a regular file is
/// refused: a pipe would be waited for, a device has no end, and to open one can do something already.
[[nodiscard]] inline QString open(QFile &file, QIODevice::OpenMode mode = QIODevice::ReadOnly)
{
    const QString notRegular = QStringLiteral("it is not a regular file");
    const QFileInfo info(file.fileName());
    if (info.exists() && !info.isFile())
        return notRegular;
    const QByteArray name = QFile::encodeName(file.fileName());
    // Another file may have come in its place.
    const int descriptor = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return qt_error_string();
    struct stat status = {};
    const bool isRegular = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    if (isRegular && file.open(descriptor, mode, QFileDevice::AutoCloseHandle))
        return QString();
    ::close(descriptor);
    return isRegular ? file.errorString() : notRegular;
}

} // namespace RegularFile
