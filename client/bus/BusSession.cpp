// SPDX-License-Identifier: Apache-2.0
#include "client/bus/BusSession.h"

#include "platform/records/Contact.h"
#include "platform/records/EventArgument.h"
#include "platform/records/ImpExpStatus.h"
#include "platform/records/KestinBus.h"
#include "platform/records/Setting.h"
#include "platform/records/UpdateReport.h"

#include <QDBusConnectionInterface>

BusSession::BusSession(std::chrono::milliseconds limit)
    : m_limit(limit)
{
    registerDBusContact();
    registerDBusContactSummary();
    registerDBusEventArgument();
    registerDBusImpExpStatus();
    registerDBusSetting();
    registerDBusUpdateReport();
}

QDBusConnection BusSession::connection() const
{
    QDBusConnection bus = KestinBus::connect();
    if (!bus.isConnected()) {
        const QString name = qEnvironmentVariable("KESTIN_BUS", QStringLiteral("system"));
        throw CommandFailure(
            ExitCode::NoService,
            QStringLiteral("the message bus \"%1\" cannot be reached: %2").arg(name, bus.lastError().message()));
    }
    return bus;
}

QDBusMessage BusSession::answer(const QString &module, const QString &method, const QVariantList &arguments) const
{
    return connection().call(KestinBus::methodCall(module, method, arguments), QDBus::Block, int(m_limit.count()));
}

QDBusPendingCall BusSession::asyncCall(const QString &module, const QString &method,
                                       const QVariantList &arguments) const
{
    return connection().asyncCall(KestinBus::methodCall(module, method, arguments), int(m_limit.count()));
}

void BusSession::expect(const QString &module, const QDBusMessage &reply, const QString &signature)
{
    if (reply.type() == QDBusMessage::ErrorMessage)
        throw BusFailure(module, reply);
    if (reply.signature() != signature)
        throw CommandFailure(ExitCode::Refused,
                             QStringLiteral("%1 answered with values of another kind (%2) than this program knows (%3)")
                                 .arg(module, reply.signature(), signature));
}

bool BusSession::isRunning(const QString &module) const
{
    return connection().interface()->isServiceRegistered(KestinBus::serviceName(module));
}

bool BusSession::isReachable(const QString &module) const
{
    return isRunning(module) ||
           connection().interface()->activatableServiceNames().value().contains(KestinBus::serviceName(module));
}
