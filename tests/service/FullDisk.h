// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/Program.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <limits>

/// A disk below a folder that is as full as a test says, for the program that is started with it. It needs no rights: a
/// library that is loaded before all others (full_disk_shim.cpp) makes the writes fail.
class FullDisk
{
public:
    /// To be made before the program is started. There is room at first.
    FullDisk(Program &program, const QString &folder)
    {
        if (!m_left.open())
            qFatal("there is no temporary file");
        empty();
        program.setEnvironment("LD_PRELOAD", sanitizer() + ' ' + KESTIN_FULL_DISK_SHIM);
        program.setEnvironment("KESTIN_FULL_DISK", m_left.fileName() + ':' + QFileInfo(folder).canonicalFilePath());
    }

    /// From now on files there can grow by so many bytes together.
    void leave(qint64 bytes)
    {
        m_left.seek(0);
        m_left.write(reinterpret_cast<const char *>(&bytes), sizeof bytes);
        m_left.flush();
    }
    void empty() { leave(std::numeric_limits<qint64>::max()); }

private:
    /// The library of a sanitizer, which wants to be the first of all; empty without one.
    static QString sanitizer()
    {
        static const QRegularExpression form("/\\S+/lib[at]san\\.so\\S*");
        QFile maps("/proc/self/maps");
        return maps.open(QIODevice::ReadOnly) ? form.match(QString::fromUtf8(maps.readAll())).captured() : QString();
    }

    QTemporaryFile m_left;
};
