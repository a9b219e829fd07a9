// SPDX-License-Identifier: Apache-2.0
#include "bench/ProcessMemory.h"

#include <QByteArray>
#include <QFile>

namespace {

double megabytes(const QByteArray &status, const char *field)
{
    for (const QByteArray &line : status.split('\n')) {
        if (line.startsWith(field))
            return line.mid(qsizetype(qstrlen(field))).simplified().split(' ').value(0).toDouble() * 1024 / 1e6;
    }
    return 0;
}

QByteArray content(qint64 processId, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(processId).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

ProcessMemory ProcessMemory::of(qint64 processId)
{
    const QByteArray status = content(processId, "status");
    return {megabytes(status, "VmRSS:"), megabytes(status, "RssAnon:"),
            megabytes(content(processId, "smaps_rollup"), "Pss:"), megabytes(status, "VmHWM:")};
}
