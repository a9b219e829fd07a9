// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QProcess>
#include <QString>
#include <QtGlobal>

/// What a process has in memory, in MB (a million bytes). 0 where the kernel does not tell.
struct ProcessMemory
{
    static ProcessMemory of(qint64 processId);

    double resident = 0;     ///< all its pages that are in memory, shared libraries among them
    double anonymous = 0;    ///< of these its own, backed by no file
    double proportional = 0; ///< a page that n processes share counted as an n-th
    double peak = 0;         ///< the most that `resident` has been
};

/// Bytes that a process has sent to the disk since its start, as the kernel counts them: whole pages.
qint64 writtenBytes(qint64 processId);

/// Milliseconds for which a process has had a processor since its start. 0 where the kernel does not tell.
double processorMs(qint64 processId);

/// A module's program, found beside this program. It ends with the object.
class ServiceProcess
{
public:
    /// `dataDirectory` is its data folder, and takes its log.
    ServiceProcess(const QString &program, const QString &module, const QString &dataDirectory,
                   const QDBusConnection &connection, const QStringList &arguments = {});
    /// Whether there is such a program beside this program.
    static bool exists(const QString &program);
    ~ServiceProcess();

    /// Starts the program and waits until its name is on the bus. The nanoseconds for it. A BenchError when the name
    /// does not come.
    qint64 start();
    /// Sends SIGTERM and waits for the end. A BenchError when the program ends in another way than it should.
    void stop();
    qint64 processId() const { return m_process.processId(); }

private:
    QString m_logPath;
    QDBusServiceWatcher m_watcher;
    QProcess m_process;
};
