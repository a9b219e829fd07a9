// SPDX-License-Identifier: Apache-2.0
#include "client/bus/EventWait.h"

#include "platform/records/KestinBus.h"

#include <QDBusServiceWatcher>
#include <QTimer>

EventWait::EventWait(const BusSession &bus)
    : m_bus(bus)
    , m_limit(bus.limit())
{
}

void EventWait::setLimit(std::chrono::milliseconds limit, const Progress &progress)
{
    m_limit = limit;
    m_progress = progress;
    m_lastProgress = progress ? progress() : 0;
}

void EventWait::listen(const QStringList &eventNames, const QString &module)
{
    auto *watcher = new QDBusServiceWatcher(KestinBus::serviceName(module), m_bus.connection(),
                                            QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this, module] {
        fail({ExitCode::NoService, QStringLiteral("%1 ended before it had answered").arg(module)});
    });
    const auto &stream = m_streams.emplace_back(std::make_unique<EventStream>(m_bus, eventNames, module));
    connect(stream.get(), &EventStream::received, this, &EventWait::take);
    connect(stream.get(), &EventStream::disconnected, this, [this] {
        fail({ExitCode::NoService, QStringLiteral("the message bus closed the connection")});
    });
}

EventWait::End EventWait::run(const Handler &handle)
{
    m_handle = handle;
    QTimer limit;
    connect(&limit, &QTimer::timeout, this, &EventWait::lookForProgress);
    limit.start(m_limit);
    if (!m_end)
        m_loop.exec();
    if (m_failure)
        throw CommandFailure(*m_failure);
    return *m_end;
}

void EventWait::lookForProgress()
{
    const qint64 progress = m_progress ? m_progress() : m_lastProgress;
    if (progress == m_lastProgress)
        end(End::TimedOut);
    m_lastProgress = progress;
}

void EventWait::take(const QString &eventName, const ListEventArgument &arguments)
{
    // Events may be waiting behind the last one wanted.
    if (!m_end && m_handle(eventName, arguments))
        end(End::Done);
}

void EventWait::end(End end)
{
    if (!m_end)
        m_end = end;
    m_loop.quit();
}

void EventWait::fail(const CommandFailure &failure)
{
    if (!m_end)
        m_failure = failure;
    end(End::Interrupted);
}

#include "moc_EventWait.cpp"
