// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QStringList>

/// A program of the project as a process of its own, found beside the test's own binary. Killed with the object.
class Program
{
public:
    explicit Program(const QString &name, const QStringList &arguments = {});
    ~Program();

    /// Set before start; the rest of the environment is the test's own.
    void setEnvironment(const QString &variable, const QString &value);
    void setArguments(const QStringList &arguments) { m_process.setArguments(arguments); }
    void start();
    /// Starts it and waits until the module's name is on the bus. False when the limit passes or the process ends; a
    /// warning says what it told.
    bool startAndWaitForName(const QString &module, const QDBusConnection &connection);
    /// Runs it to its end and returns the exit code, -1 when it crashed or the limit passed.
    int run(const QByteArray &input = {});

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    qint64 processId() const { return m_process.processId(); }
    /// The exit code, -1 when it crashed or the limit passed.
    int waitForEnd();
    /// SIGTERM, then waits as waitForEnd does.
    int terminate();
    /// SIGKILL, then waits.
    void kill();
    /// Stops it as it is, and waits until none of its threads goes on; and lets it go on.
    void freeze();
    void thaw();

    /// Everything written so far.
    QString output();
    QString errorOutput();
    /// Waits until the standard error holds the text; when it does not, a warning says what it holds.
    bool waitForErrorOutput(const QString &text);

    static constexpr int limitMs = 60000;

private:
    void read();

    QProcess m_process;
    QByteArray m_output;
    QByteArray m_errorOutput;
};
