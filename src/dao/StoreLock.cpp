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

QString StoreLock::take(const QString &path)
{
    if (path == m_path)
        return {};
    release();
    const QByteArray name = QFile::encodeName(path);
    m_descriptor = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (m_descriptor >= 0 && ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0) {
        m_path = path;
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
    m_path.clear();
}
