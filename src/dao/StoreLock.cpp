// SPDX-License-Identifier: Apache-2.0
#include "src/dao/StoreLock.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

std::optional<QString> StoreLock::take(const QString &folder)
{
    if (folder == m_folder)
        return std::nullopt;
    m_folder.clear();
    m_descriptor = OwnedDescriptor();
    OwnedDescriptor descriptor(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen() && ::flock(descriptor.number(), LOCK_EX | LOCK_NB) == 0) {
        m_descriptor = std::move(descriptor);
        m_folder = folder;
        return std::nullopt;
    }
    const int error = errno;
    return error == EWOULDBLOCK ? QStringLiteral("another process uses it") : QString::fromLocal8Bit(strerror(error));
}
