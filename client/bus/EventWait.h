// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/EventStream.h"

#include <QEventLoop>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// Waits for events that answer a call. Events raised between `listen` and `run` are not lost. An object serves a
/// single wait.
class EventWait : public QObject
{
    Q_OBJECT

public:
    enum class End { Done, Interrupted, TimedOut };
    /// Takes an event. True when the wait is over with it. Does not throw.
    using Handler = std::function<bool(const QString &eventName, const ListEventArgument &arguments)>;

    /// A number that changes whenever the work that is waited for has gone on.
    using Progress = std::function<qint64()>;

    /// Waits no longer than the session waits for an answer.
    explicit EventWait(const BusSession &bus);

    /// Waits this long instead, and as long again as there was progress meanwhile.
    void setLimit(std::chrono::milliseconds limit, const Progress &progress = {});

    /// Wants the events of these names. Throws CommandFailure when the bus cannot be reached.
    void listen(const QStringList &eventNames, const QString &module);

    /// Hands over the events in order, until the last event, until `interrupt` or until the limit is over. Throws
    /// CommandFailure when the bus closes the connection or a module that was to answer leaves it.
    End run(const Handler &handle);
    /// These end the wait from outside: `finish` as if the last event had come, `interrupt` for the user's sake, `fail`
    /// with `run` throwing this failure.
    void finish() { end(End::Done); }
    void interrupt() { end(End::Interrupted); }
    void fail(const CommandFailure &failure);

private:
    void take(const QString &eventName, const ListEventArgument &arguments);
    void end(End end);
    void lookForProgress();

    const BusSession &m_bus;
    std::chrono::milliseconds m_limit;
    Progress m_progress;
    qint64 m_lastProgress = 0;
    std::vector<std::unique_ptr<EventStream>> m_streams;
    Handler m_handle;
    QEventLoop m_loop;
    std::optional<End> m_end;
    std::optional<CommandFailure> m_failure;
};
