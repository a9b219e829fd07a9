// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/DirectorySearch.h"

#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QUuid>

using namespace std::chrono_literals;

DirectorySearch::DirectorySearch(ModuleCalls &calls)
    : m_calls(calls)
    , m_name(QLatin1String("screen-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(60s);
    connect(&m_limit, &QTimer::timeout, this, &DirectorySearch::fail);
    m_restart.setSingleShot(true);
    m_restart.setInterval(1s);
    connect(&m_restart, &QTimer::timeout, this, &DirectorySearch::again);
}

void DirectorySearch::start(const QString &text)
{
    m_text = text;
    m_id = QStringLiteral("%1-%2").arg(m_name).arg(++m_number);
    m_isRunning = true;
    m_limit.start();
    m_restart.stop();
    const bool localOnly = text.trimmed().isEmpty();
    m_calls.ask<int>(this, ModuleName::directory, "startSearchContactByName", {m_id, text, told, localOnly},
                     [this, id = m_id](std::optional<int> code) {
                         if (!code && id == m_id)
                             fail();
                     });
}

void DirectorySearch::ask(int start, int length)
{
    m_calls.ask<ListContactSummary>(this, ModuleName::directory, "getSearchResults", {m_id, start, length},
                                    [this, id = m_id, start](const std::optional<ListContactSummary> &contacts) {
                                        if (id != m_id)
                                            return;
                                        if (!contacts)
                                            fail();
                                        else if (contacts->isEmpty())
                                            again();
                                        else
                                            Q_EMIT page(start, *contacts);
                                    });
}

void DirectorySearch::takeResults(const KestinEvent &event)
{
    if (!m_isRunning || !isOurs(event))
        return;
    m_limit.start();
    Q_EMIT found(event.argument<int>(ArgumentName::nbResults),
                 event.argument<ListContactSummary>(ArgumentName::listContactSummary));
}

void DirectorySearch::takeCompletion(const KestinEvent &event)
{
    if (!event.argument<QString>(ArgumentName::searchId).startsWith(m_name)) {
        takeOtherCompletion();
    } else if (m_isRunning && isOurs(event)) {
        m_isRunning = false;
        m_limit.stop();
        Q_EMIT completed(event.argument<int>(ArgumentName::nbResults));
    }
}

void DirectorySearch::takeOtherCompletion()
{
    if (m_isRunning)
        m_restart.start();
}

void DirectorySearch::fail()
{
    m_isRunning = false;
    m_limit.stop();
    Q_EMIT failed();
}

bool DirectorySearch::isOurs(const KestinEvent &event) const
{
    return event.argument<QString>(ArgumentName::searchId) == m_id;
}
