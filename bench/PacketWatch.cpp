// SPDX-License-Identifier: Apache-2.0
#include "bench/PacketWatch.h"

#include "bench/BenchError.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QDBusPendingCall>
#include <QTimer>

PacketWatch::PacketWatch(const QDBusConnection &connection)
    : m_connection(connection)
{
    for (const QLatin1String module : {ModuleName::webServiceManager, ModuleName::directory})
        m_connection.connect(QString(), KestinBus::objectPath(module), QLatin1String(KestinBus::eventInterface),
                             QLatin1String(KestinBus::eventSignal), QLatin1String(KestinBus::eventSignature), this,
                             SLOT(take(QDBusMessage)));
}

void PacketWatch::take(const QDBusMessage &message)
{
    const QString name = message.arguments().value(0).toString();
    if (name == EventName::wsNextResults)
        m_timer.start();
    else if (name == EventName::searchResults)
        m_times.append(m_timer.nsecsElapsed());
    else if (name == EventName::searchCompletedByName)
        m_loop.quit();
}

void PacketWatch::measure(const QString &name, int packets, Samples &samples)
{
    constexpr int limitMs = 60000;
    constexpr int allSummaries = 1000000;
    m_times.clear();
    const QDBusMessage call =
        KestinBus::methodCall(ModuleName::directory, QStringLiteral("startSearchContactByName"),
                              {QStringLiteral("packets %1").arg(++m_searches), name, allSummaries, false});
    QDBusPendingCall reply = m_connection.asyncCall(call);
    QTimer::singleShot(limitMs, &m_loop, &QEventLoop::quit);
    m_loop.exec();
    reply.waitForFinished();
    if (m_times.size() != packets)
        throw BenchError(QStringLiteral("%1 packets were told, not %2").arg(m_times.size()).arg(packets));
    for (const qint64 time : std::as_const(m_times))
        samples.add(time);
}
