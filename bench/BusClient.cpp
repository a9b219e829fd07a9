// SPDX-License-Identifier: Apache-2.0
#include "bench/BusClient.h"

#include "bench/BenchError.h"
#include "platform/records/ContactIds.h"
#include "platform/records/KestinBus.h"

#include <QElapsedTimer>

BusClient::BusClient(const QDBusConnection &connection)
    : m_connection(connection)
{
}

BusClient::Answer BusClient::call(const QString &module, const QString &method, const QVariantList &arguments) const
{
    constexpr int limitMs = 120000;
    const QDBusMessage message = KestinBus::methodCall(module, method, arguments);
    QElapsedTimer timer;
    timer.start();
    const QDBusMessage reply = m_connection.call(message, QDBus::Block, limitMs);
    const qint64 nanoseconds = timer.nsecsElapsed();
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw BenchError(QStringLiteral("%1 of %2 failed: %3").arg(method, module, reply.errorMessage()));
    return {nanoseconds, reply};
}

BusClient::Answer BusClient::callDirectory(const QString &method, const QVariantList &arguments) const
{
    return call(ModuleName::directory, method, arguments);
}

BusClient::Answer BusClient::callTelephony(const QString &method, const QStringList &numbers) const
{
    return call(ModuleName::telephony, method, {numbers});
}

BusClient::Answer BusClient::emptyCall() const
{
    // An id of this form is answered from its text alone.
    return callDirectory(QStringLiteral("getContactTypeById"), {ContactIds::remoteEnd});
}
