// SPDX-License-Identifier: Apache-2.0
#include "bench/SearchClient.h"

#include "bench/BenchError.h"
#include "platform/records/ContactSummary.h"
#include "platform/records/EventArgument.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QDBusPendingCall>
#include <QTimer>

#include <algorithm>

namespace {

ListEventArgument argumentsOf(const QDBusMessage &event)
{
    return qdbus_cast<ListEventArgument>(event.arguments().value(1));
}

} // namespace

SearchClient::SearchClient(const QDBusConnection &connection)
    : m_connection(connection)
{
    m_connection.connect(QString(), KestinBus::objectPath(ModuleName::directory),
                         QLatin1String(KestinBus::eventInterface), QLatin1String(KestinBus::eventSignal),
                         QLatin1String(KestinBus::eventSignature), this, SLOT(take(QDBusMessage)));
}

void SearchClient::take(const QDBusMessage &message)
{
    const qint64 now = m_timer.isValid() ? m_timer.nsecsElapsed() : 0;
    const QString name = message.arguments().value(0).toString();
    if (name == EventName::searchResults && m_times.firstResults == 0) {
        m_times.firstResults = now;
        m_firstResults = message;
    } else if (name == EventName::searchCompletedByName) {
        m_times.completion = now;
        m_completion = message;
        m_loop.quit();
    }
}

SearchClient::Times SearchClient::search(const QString &name, int hits, bool localOnly)
{
    constexpr int limitMs = 120000;
    m_searchId = QStringLiteral("bench %1").arg(++m_searches);
    m_times = {};
    const QDBusMessage call = KestinBus::methodCall(ModuleName::directory, QStringLiteral("startSearchContactByName"),
                                                    {m_searchId, name, summariesWanted, localOnly});
    QTimer limit;
    limit.setSingleShot(true);
    connect(&limit, &QTimer::timeout, &m_loop, &QEventLoop::quit);
    limit.start(limitMs);
    m_timer.start();
    QDBusPendingCall reply = m_connection.asyncCall(call);
    m_loop.exec();
    reply.waitForFinished();
    if (reply.isError() || m_times.completion == 0)
        throw BenchError(QStringLiteral("the search for %1 does not end: %2").arg(name, reply.error().message()));
    check(m_completion, hits, 0);
    if (localOnly)
        check(m_firstResults, hits, std::min(hits, summariesWanted));
    return m_times;
}

void SearchClient::check(const QDBusMessage &event, int hits, int summaries) const
{
    const ListEventArgument arguments = argumentsOf(event);
    if (arguments.size() != 3 || arguments.at(0).value.toString() != m_searchId)
        throw BenchError(QStringLiteral("a search is answered with the event of another"));
    const int found = arguments.at(1).value.toInt();
    const auto told = qdbus_cast<ListContactSummary>(arguments.at(2).value).size();
    if (found != hits || told < summaries)
        throw BenchError(QStringLiteral("a search found %1 contacts and told %2").arg(found).arg(told));
}
