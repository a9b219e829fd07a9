// SPDX-License-Identifier: Apache-2.0
#include "bench/Machine.h"

#include <QFile>
#include <QStorageInfo>
#include <QSysInfo>
#include <QThread>

#include <sqlite3.h>

namespace {

QString processorName()
{
    QFile file(QStringLiteral("/proc/cpuinfo"));
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : file.readAll().split('\n')) {
            if (line.startsWith("model name"))
                return QString::fromUtf8(line.mid(line.indexOf(':') + 1)).trimmed();
        }
    }
    return QSysInfo::currentCpuArchitecture();
}

} // namespace

Machine Machine::describe(const QString &workDirectory)
{
    Machine machine;
    machine.processor = processorName();
    machine.cores = QThread::idealThreadCount();
    machine.kernel = QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion();
    machine.fileSystem = QString::fromUtf8(QStorageInfo(workDirectory).fileSystemType());
    machine.software =
        QStringLiteral("Qt %1, SQLite %2, build type %3")
            .arg(QLatin1String(qVersion()), QLatin1String(sqlite3_libversion()), QLatin1String(KESTIN_BUILD_TYPE));
    return machine;
}
