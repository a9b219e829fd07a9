// SPDX-License-Identifier: Apache-2.0
#include "tests/service/SmallDisk.h"

#include <QFile>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

bool writeFile(const char *path, const QByteArray &text)
{
    QFile file(QString::fromUtf8(path));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

} // namespace

SmallDisk::SmallDisk(const QString &folder, int megabytes)
    : m_folder(folder.toUtf8())
{
    const QByteArray options = "size=" + QByteArray::number(megabytes) + "m";
    m_mounted = mount("tmpfs", m_folder.constData(), "tmpfs", 0, options.constData()) == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_mounted)
        umount2(m_folder.constData(), MNT_DETACH);
}

bool SmallDisk::fill()
{
    const int file = open((m_folder + "/filler").constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    const QByteArray block(4096, 'x');
    while (write(file, block.constData(), size_t(block.size())) == block.size()) {
    }
    const bool isFull = errno == ENOSPC;
    close(file);
    return isFull;
}

void SmallDisk::empty()
{
    unlink((m_folder + "/filler").constData());
}

bool SmallDisk::enterMountNamespace()
{
    const uid_t user = getuid();
    const gid_t group = getgid();
    if (user != 0) {
        // Whoever is not root becomes it in a namespace of its own.
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0 || !writeFile("/proc/self/setgroups", "deny") ||
            !writeFile("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1") ||
            !writeFile("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1"))
            return false;
    } else if (unshare(CLONE_NEWNS) != 0) {
        return false;
    }
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}
