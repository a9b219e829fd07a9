// SPDX-License-Identifier: Apache-2.0
#include "bench/SyncClient.h"

#include "bench/BenchError.h"
#include "platform/records/EventArgument.h"
#include "platform/records/ImpExpStatus.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QDBusPendingCall>
#include <QDateTime>
#include <QElapsedTimer>
#include <QTimer>

SyncClient::SyncClient(const QDBusConnection &connection)
    : m_connection(connection)
{
    m_connection.connect(QString(), KestinBus::objectPath(ModuleName::directory),
                         QLatin1String(KestinBus::eventInterface), QLatin1String(KestinBus::eventSignal),
                         QLatin1String(KestinBus::eventSignature), this, SLOT(take(QDBusMessage)));
}

void SyncClient::take(const QDBusMessage &message)
{
    if (message.arguments().value(0).toString() != m_event)
        return;
    m_end = message;
    m_loop.quit();
}

qint64 SyncClient::exportTo(const QString &path, const Beside &beside)
{
    const QVariantList arguments{
        path, 0, true, QStringLiteral("bench"), QStringLiteral("bench"), QDateTime::currentDateTimeUtc(), QDateTime()};
    return run(QStringLiteral("exportToXml"), arguments, EventName::exportFinished, beside);
}

qint64 SyncClient::importFrom(const QString &path, const Beside &beside)
{
    return run(QStringLiteral("importFromXml"), {path}, EventName::importFinished, beside);
}

qint64 SyncClient::run(const QString &method, const QVariantList &arguments, const QString &event, const Beside &beside)
{
    constexpr int limitMs = 600000;
    m_event = event;
    m_end = {};
    const QDBusMessage call = KestinBus::methodCall(ModuleName::directory, method, arguments);
    QTimer limit;
    limit.setSingleShot(true);
    connect(&limit, &QTimer::timeout, &m_loop, &QEventLoop::quit);
    limit.start(limitMs);
    QTimer idle;
    if (beside) {
        connect(&idle, &QTimer::timeout, this, beside);
        idle.start(1);
    }
    QElapsedTimer timer;
    timer.start();
    QDBusPendingCall reply = m_connection.asyncCall(call, limitMs);
    m_loop.exec();
    const qint64 nanoseconds = timer.nsecsElapsed();
    reply.waitForFinished(); // the events that follow the end are out by then
    const auto values = qdbus_cast<ListEventArgument>(m_end.arguments().value(1));
    const QString cause = values.value(1).value.toString();
    const bool isSuccess =
        values.size() == 2 && qdbus_cast<ImpExpStatus>(values.at(0).value) == ImpExpStatus::Success && cause.isEmpty();
    if (!isSuccess)
        throw BenchError(QStringLiteral("%1 did not succeed: %2 %3").arg(method, reply.error().message(), cause));
    return nanoseconds;
}
