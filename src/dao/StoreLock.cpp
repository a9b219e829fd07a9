// SPDX-License-Identifier: Apache-2.0
#include "src/dao/StoreLock.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

StoreLock::~StoreLock()
{
    release();
}

QString StoreLock::take(const QString &folder)
{
    if (folder == m_folder)
        return {};
    release();
    const QByteArray name = QFile::encodeName(folder);
    m_descriptor = ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_descriptor >= 0 && ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0) {
        m_folder = folder;
        return {};
    }
    const int error = errno;
    release();
    return error == EWOULDBLOCK ? QStringLiteral("another process uses it") : QString::fromLocal8Bit(strerror(error));
}

void StoreLock::release()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    m_folder.clear();
}
