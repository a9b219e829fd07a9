// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/EventStream.h"

#include <QEventLoop>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// Waits for events that answer a call. Those raised between `listen` and `run` are not lost. Used for one wait.
class EventWait : public QObject
{
    Q_OBJECT

public:
    enum class End { Done, Interrupted, TimedOut };
    /// Takes an event; true when it is the last one that was waited for. Does not throw.
    using Handler = std::function<bool(const QString &eventName, const ListEventArgument &arguments)>;

    /// A number that is another one whenever the work that is waited for has gone on.
    using Progress = std::function<qint64()>;

    /// Waits no longer than the session waits for an answer.
    explicit EventWait(const BusSession &bus);

    /// Waits this long instead, and as long again as there was progress meanwhile.
    void setLimit(std::chrono::milliseconds limit, const Progress &progress = {});

    /// Wants the events of these names. Throws CommandFailure when the bus cannot be reached.
    void listen(const QStringList &eventNames, const QString &module);

    /// Hands over the events in order, until the last one, until `interrupt` or until the limit is over. Throws
    /// CommandFailure when the bus closes the connection or a module that was to answer leaves it.
    End run(const Handler &handle);
    /// Ends the wait from outside: as if the last event had come, for the user's sake, or with `run` throwing this.
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
