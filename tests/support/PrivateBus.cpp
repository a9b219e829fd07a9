// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PrivateBus.h"

#include <csignal>

PrivateBus::PrivateBus()
    : PrivateBus(QStringLiteral(KESTIN_BUS_CONFIG))
{
}

PrivateBus::PrivateBus(const QString &configuration)
{
    m_daemon.setProcessChannelMode(QProcess::SeparateChannels);
    // A test that is a module of the platform has SIGTERM blocked, and children inherit that.
    m_daemon.setChildProcessModifier([] {
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
    });
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file=") + configuration, QStringLiteral("--nofork"),
                    QStringLiteral("--nopidfile"), QStringLiteral("--nosyslog"), QStringLiteral("--print-address=1")});
    while (!m_daemon.canReadLine()) {
        if (!m_daemon.waitForReadyRead(limitMs))
            qFatal("dbus-daemon did not start: %s", m_daemon.readAllStandardError().constData());
    }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    qputenv("KESTIN_BUS", m_address.toUtf8());
}

PrivateBus::~PrivateBus()
{
    m_daemon.terminate();
    m_daemon.waitForFinished(limitMs);
}

QDBusConnection PrivateBus::connection(const QString &name) const
{
    return QDBusConnection::connectToBus(m_address, name);
}
