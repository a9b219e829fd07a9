// SPDX-License-Identifier: Apache-2.0
#include "bench/ServiceProcess.h"

#include "bench/BenchError.h"
#include "platform/records/KestinBus.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcessEnvironment>
#include <QTimer>

#include <csignal>
#include <ctime>

#include <sys/prctl.h>

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

constexpr int limitMs = 120000;

QString pathOf(const QString &program)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + program;
}

} // namespace

ProcessMemory ProcessMemory::of(qint64 processId)
{
    const QByteArray status = content(processId, "status");
    return {megabytes(status, "VmRSS:"), megabytes(status, "RssAnon:"),
            megabytes(content(processId, "smaps_rollup"), "Pss:"), megabytes(status, "VmHWM:")};
}

qint64 writtenBytes(qint64 processId)
{
    for (const QByteArray &line : content(processId, "io").split('\n')) {
        if (line.startsWith("write_bytes:"))
            return line.mid(line.indexOf(':') + 1).trimmed().toLongLong();
    }
    return 0;
}

double processorMs(qint64 processId)
{
    clockid_t clock = {};
    timespec time = {};
    const bool isTold = clock_getcpuclockid(pid_t(processId), &clock) == 0 && clock_gettime(clock, &time) == 0;
    return isTold ? double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6 : 0;
}

ServiceProcess::ServiceProcess(const QString &program, const QString &module, const QString &dataDirectory,
                               const QDBusConnection &connection, const QStringList &arguments)
    : m_logPath(dataDirectory + QLatin1Char('/') + program + QLatin1String(".log"))
    , m_watcher(KestinBus::serviceName(module), connection, QDBusServiceWatcher::WatchForRegistration)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KESTIN_DATA_DIR"), dataDirectory);
    environment.remove(QStringLiteral("KESTIN_LOG_LEVEL"));
    m_process.setProcessEnvironment(environment);
    m_process.setProgram(pathOf(program));
    m_process.setArguments(arguments);
    m_process.setStandardErrorFile(m_logPath, QIODevice::Append);
    // Whatever ends this program ends the service too.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

ServiceProcess::~ServiceProcess()
{
    m_process.terminate();
    if (!m_process.waitForFinished(limitMs))
        m_process.kill();
}

bool ServiceProcess::exists(const QString &program)
{
    return QFile::exists(pathOf(program));
}

qint64 ServiceProcess::start()
{
    QEventLoop loop;
    qint64 nanoseconds = -1;
    QElapsedTimer timer;
    QObject::connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, &loop, [&] {
        nanoseconds = timer.nsecsElapsed();
        loop.quit();
    });
    QObject::connect(&m_process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&m_process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    QTimer::singleShot(limitMs, &loop, &QEventLoop::quit);
    timer.start();
    m_process.start();
    if (m_process.error() != QProcess::FailedToStart)
        loop.exec();
    if (nanoseconds >= 0)
        return nanoseconds;
    QFile log(m_logPath);
    const QByteArray text = log.open(QIODevice::ReadOnly) ? log.readAll().right(2000) : QByteArray();
    throw BenchError(QStringLiteral("%1 does not come up (%2)\n%3")
                         .arg(m_process.program(), m_process.errorString(), QString::fromUtf8(text)));
}

void ServiceProcess::stop()
{
    m_process.terminate();
    if (!m_process.waitForFinished(limitMs) || m_process.exitStatus() != QProcess::NormalExit ||
        m_process.exitCode() != 0)
        throw BenchError(QStringLiteral("%1 does not end as it should").arg(m_process.program()));
}
