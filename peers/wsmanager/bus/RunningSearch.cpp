// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/bus/RunningSearch.h"

#include <utility>

RunningSearch::RunningSearch(const Times &times)
    : m_times(times)
{
    for (QTimer *timer : {&m_limit, &m_delay, &m_idle})
        timer->setSingleShot(true);
    m_delay.setTimerType(Qt::PreciseTimer); // the others may be a little early
    connect(&m_limit, &QTimer::timeout, this, &RunningSearch::giveUp);
    connect(&m_delay, &QTimer::timeout, this, &RunningSearch::answer);
    connect(&m_idle, &QTimer::timeout, this, &RunningSearch::forgotten);
    m_idle.start(forgottenAfter);
}

void RunningSearch::begin(std::unique_ptr<DirectorySearch> search)
{
    m_search = std::move(search);
    connect(m_search.get(), &DirectorySearch::packet, this, &RunningSearch::keep);
    fetch();
}

void RunningSearch::ask()
{
    if (m_isAsked)
        return;
    m_isAsked = true;
    m_idle.stop();
    m_limit.start(m_times.limit);
    m_delay.start(m_times.delay);
    if (m_search && !m_packet && !m_isFetching)
        fetch();
}

void RunningSearch::fetch()
{
    m_isFetching = true;
    m_search->next();
}

void RunningSearch::keep(const DirectoryEntries &entries, PacketStatus status)
{
    m_isFetching = false;
    m_packet = Packet{entries, status};
    answer();
}

void RunningSearch::answer()
{
    if (!m_isAsked || !m_packet || m_delay.isActive())
        return;
    const Packet packet = *std::exchange(m_packet, std::nullopt);
    m_isAsked = false;
    m_limit.stop();
    m_idle.start(forgottenAfter);
    Q_EMIT answered(packet.entries, packet.status);
}

void RunningSearch::giveUp()
{
    if (m_isFetching)
        Q_EMIT silent();
    m_isAsked = false;
    Q_EMIT answered({}, PacketStatus::TimedOut);
}

#include "moc_RunningSearch.cpp"
