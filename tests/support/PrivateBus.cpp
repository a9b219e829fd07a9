// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PrivateBus.h"

#include "platform/records/Capability.h"
#include "platform/records/Contact.h"
#include "platform/records/EventArgument.h"
#include "platform/records/ImpExpStatus.h"
#include "platform/records/KestinMode.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/Setting.h"
#include "platform/records/UpdateReport.h"

#include <QDBusPendingCallWatcher>
#include <QEventLoop>

#include <csignal>

PrivateBus::PrivateBus()
    : PrivateBus(QStringLiteral(KESTIN_BUS_CONFIG))
{
}

PrivateBus::PrivateBus(const QString &configuration)
{
    for (const auto registerRecord :
         {registerDBusCapability, registerDBusContact, registerDBusContactSummary, registerDBusEventArgument,
          registerDBusImpExpStatus, registerDBusKestinMode, registerDBusQMapQStringQStringList, registerDBusSetting,
          registerDBusUpdateReport})
        registerRecord();
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

QDBusMessage PrivateBus::answerTo(const QDBusMessage &call, const QString &name) const
{
    QDBusPendingCallWatcher watcher(connection(name).asyncCall(call, limitMs));
    QEventLoop loop;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    if (!watcher.isFinished())
        loop.exec(); // the call has its own limit
    return watcher.reply();
}
