// SPDX-License-Identifier: Apache-2.0
#include "tests/service/FullDisk.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace {

/// The library of a sanitizer, which wants to be the first of all; empty without one.
QString sanitizer()
{
    static const QRegularExpression form("/\\S+/lib[at]san\\.so\\S*");
    QFile maps("/proc/self/maps");
    return maps.open(QIODevice::ReadOnly) ? form.match(QString::fromUtf8(maps.readAll())).captured() : QString();
}

} // namespace

FullDisk::FullDisk(Program &program, const QString &folder)
{
    if (!m_left.open())
        qFatal("there is no temporary file");
    empty();
    program.setEnvironment("LD_PRELOAD", sanitizer() + ' ' + KESTIN_FULL_DISK_SHIM);
    program.setEnvironment("KESTIN_FULL_DISK", m_left.fileName() + ':' + QFileInfo(folder).canonicalFilePath());
}

void FullDisk::leave(qint64 bytes)
{
    m_left.seek(0);
    m_left.write(reinterpret_cast<const char *>(&bytes), sizeof bytes);
    m_left.flush();
}
