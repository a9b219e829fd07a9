// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "fuzz/Promise.h"

#include <QString>

#include <sys/mman.h>
#include <unistd.h>

/// A regular file that has a path but never touches a disk, for what reads files.
class MemoryFile
{
public:
    MemoryFile()
        : m_file(memfd_create("input", MFD_CLOEXEC))
    {
    }
    ~MemoryFile() { close(m_file); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    void setContent(const void *data, size_t size)
    {
        promise(ftruncate(m_file, 0) == 0 && pwrite(m_file, data, size, 0) == ssize_t(size), "the file is written");
    }
    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_file); }

private:
    int m_file;
};
