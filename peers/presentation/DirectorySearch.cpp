// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/DirectorySearch.h"

#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QUuid>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr auto usualLimit = 60s;
constexpr auto longestLimit = 1h;
constexpr auto timeToRead = 1s; ///< for whoever has searched
constexpr auto firstRetry = 2s;
constexpr int mostDoublings = 5;
constexpr int mostRecoveries = 3;
constexpr auto otherSearch = 12s; ///< the directory gives a company that is silent 10 s

} // namespace

DirectorySearch::DirectorySearch(ModuleCalls &calls)
    : m_calls(calls)
    , m_name(QLatin1String("screen-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        // It was replaced by one that nobody completed, or the company is that slow.
        m_limit.setInterval(std::min<std::chrono::milliseconds>(2 * m_limit.intervalAsDuration(), longestLimit));
        again();
    });
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &DirectorySearch::again);
}

void DirectorySearch::start(const QString &text)
{
    m_text = text;
    m_recoveries = 0;
    m_limit.setInterval(usualLimit);
    again();
}

void DirectorySearch::again()
{
    m_turn.stop();
    m_isRunning = true;
    Q_EMIT began();
    m_id = nextId(); // what is on its way for the text before is not for this one
    if (m_isHeld)
        m_isDue = true;
    else
        begin();
}

void DirectorySearch::begin()
{
    m_isDue = false;
    m_limit.start();
    const bool localOnly = m_text.trimmed().isEmpty();
    m_calls.ask<int>(this, ModuleName::directory, "startSearchContactByName", {m_id, m_text, told, localOnly},
                     [this, id = m_id](std::optional<int> code) {
                         if (!code && id == m_id)
                             fail();
                     });
}

void DirectorySearch::againInTurn()
{
    if (m_otherFound.isValid() && !m_otherFound.hasExpired(std::chrono::milliseconds(otherSearch).count())) {
        m_isRunning = true;
        Q_EMIT began();
        m_turn.start(otherSearch);
    } else {
        again();
    }
}

void DirectorySearch::recover()
{
    if (++m_recoveries > mostRecoveries) { // there are fewer than it said
        fail();
        return;
    }
    m_isRunning = true;
    Q_EMIT began();
    if (!m_otherEnded.isValid())
        m_turn.start(otherSearch);
    else
        m_turn.start(
            std::max<std::chrono::milliseconds>(0ms, timeToRead - std::chrono::milliseconds(m_otherEnded.elapsed())));
}

void DirectorySearch::setHeld(bool held)
{
    m_isHeld = held;
    if (held) {
        m_isDue |= m_isRunning;
    } else {
        m_otherEnded.start();
        if (m_isDue) {
            m_id = nextId();
            begin();
        }
    }
}

void DirectorySearch::ask(int start, int length)
{
    m_calls.ask<ListContactSummary>(this, ModuleName::directory, "getSearchResults", {m_id, start, length},
                                    [this, id = m_id, start](const std::optional<ListContactSummary> &contacts) {
                                        if (id != m_id || m_isRunning)
                                            return;
                                        if (!contacts)
                                            fail();
                                        else if (contacts->isEmpty())
                                            recover();
                                        else
                                            takePage(start, *contacts);
                                    });
}

void DirectorySearch::takePage(int start, const ListContactSummary &contacts)
{
    m_recoveries = 0;
    Q_EMIT page(start, contacts);
}

void DirectorySearch::takeResults(const KestinEvent &event)
{
    const QString id = event.argument<QString>(ArgumentName::searchId);
    if (id != m_id) {
        if (!id.startsWith(m_name))
            m_otherFound.start();
        return;
    }
    m_limit.start();
    m_turn.stop();
    Q_EMIT found(event.argument<int>(ArgumentName::nbResults),
                 event.argument<ListContactSummary>(ArgumentName::listContactSummary));
}

bool DirectorySearch::takeCompletion(const KestinEvent &event)
{
    const QString id = event.argument<QString>(ArgumentName::searchId);
    if (id == m_id) {
        m_isRunning = false;
        m_isDue = false;
        m_limit.stop();
        m_turn.stop();
        m_otherEnded.invalidate();
        m_failures = 0;
        Q_EMIT completed(event.argument<int>(ArgumentName::nbResults));
    }
    if (id.startsWith(m_name))
        return true;
    takeOtherCompletion();
    return false;
}

void DirectorySearch::takeOtherCompletion()
{
    m_otherEnded.start();
    m_otherFound.invalidate();
    if (m_isRunning && !m_isHeld) // it may have taken the place of this one, whose completion is not told then
        m_turn.start(timeToRead);
}

void DirectorySearch::fail()
{
    m_isRunning = false;
    m_isDue = false;
    m_otherFound.invalidate();
    m_limit.stop();
    m_turn.start(firstRetry * (1 << std::min(m_failures++, mostDoublings)));
    Q_EMIT failed();
}

#include "moc_DirectorySearch.cpp"
