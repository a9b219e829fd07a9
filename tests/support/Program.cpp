// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Program.h"

#include "platform/records/KestinBus.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDeadlineTimer>
#include <QProcessEnvironment>

#include <sys/wait.h>

#include <csignal>

Program::Program(const QString &name, const QStringList &arguments)
{
    m_process.setProgram(QCoreApplication::applicationDirPath() + '/' + name);
    m_process.setArguments(arguments);
    m_process.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
}

Program::~Program()
{
    kill();
}

void Program::setEnvironment(const QString &variable, const QString &value)
{
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(variable, value);
    m_process.setProcessEnvironment(environment);
}

void Program::start()
{
    // What was exported since this object was made, the bus address above all, counts as well.
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert("KESTIN_BUS", qEnvironmentVariable("KESTIN_BUS"));
    m_process.setProcessEnvironment(environment);
    m_process.start();
    m_process.waitForStarted(limitMs);
}

bool Program::startAndWaitForName(const QString &module, const QDBusConnection &connection)
{
    start();
    const QString name = KestinBus::serviceName(module);
    const QDeadlineTimer limit(limitMs);
    // Waiting for the process reads its output as well, so a talkative one cannot block on a full pipe.
    while (!connection.interface()->isServiceRegistered(name)) {
        if (!limit.hasExpired() && !m_process.waitForFinished(5) && isRunning())
            continue;
        qWarning("%s does not come up: %s", qPrintable(module), qPrintable(errorOutput()));
        return false;
    }
    return true;
}

int Program::run(const QByteArray &input)
{
    start();
    m_process.write(input);
    m_process.closeWriteChannel();
    return waitForEnd();
}

int Program::waitForEnd()
{
    if ((isRunning() && !m_process.waitForFinished(limitMs)) || m_process.exitStatus() != QProcess::NormalExit)
        return -1;
    return m_process.exitCode();
}

int Program::terminate()
{
    m_process.terminate();
    return waitForEnd();
}

void Program::kill()
{
    m_process.kill();
    m_process.waitForFinished(limitMs);
}

void Program::freeze()
{
    siginfo_t state;
    ::kill(pid_t(processId()), SIGSTOP);
    waitid(P_PID, id_t(processId()), &state, WSTOPPED);
}

void Program::thaw()
{
    ::kill(pid_t(processId()), SIGCONT);
}

void Program::read()
{
    m_output += m_process.readAllStandardOutput();
    m_errorOutput += m_process.readAllStandardError();
}

QString Program::output()
{
    read();
    return QString::fromUtf8(m_output);
}

QString Program::errorOutput()
{
    read();
    return QString::fromUtf8(m_errorOutput);
}

bool Program::waitForErrorOutput(const QString &text)
{
    const QDeadlineTimer limit(limitMs);
    while (!errorOutput().contains(text)) {
        if (!limit.hasExpired() && (m_process.waitForReadyRead(50) || isRunning() || errorOutput().contains(text)))
            continue;
        qWarning("\"%s\" is not told, but: %s", qPrintable(text), qPrintable(errorOutput()));
        return false;
    }
    return true;
}
