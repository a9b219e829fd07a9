// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/DirectoryService.h"
#include "client/bus/EventWait.h"
#include "platform/records/ImpExpStatus.h"

#include <QDBusPendingCallWatcher>
#include <functional>
#include <optional>

/// An export or import of the synchronisation file, from the call to the event that tells how it ended.
class SyncRun : public QObject
{
    Q_OBJECT

public:
    struct Outcome
    {
        ImpExpStatus status;
        QString cause; ///< of a failure; of an import, also the contacts that were left out, a line each
    };

    /// `limit` is how long the wait lasts while the run does not seem to go on. An export that still writes goes on.
    SyncRun(const BusSession &bus, std::chrono::milliseconds limit);

    /// Call either of these two, a single time. Both throw CommandFailure when the directory cannot be reached, ends
    /// meanwhile or does not tell the end within the limit, and when the run is interrupted; an import also when
    /// another import is going on.
    Outcome exportTo(const ExportRequest &request);
    Outcome importFrom(const QString &path);
    void interrupt() { m_wait.interrupt(); }

private:
    Outcome run(const QString &eventName, const std::function<QDBusPendingCall(const DirectoryService &)> &call);
    void takeReply(const QDBusMessage &reply);
    void lookForEvent();

    const BusSession &m_bus;
    BusSession m_patientBus;
    std::chrono::milliseconds m_limit;
    EventWait m_wait;
    std::optional<Outcome> m_outcome;
    bool m_isAnswered = false;
    std::optional<QDBusPendingCallWatcher> m_look; ///< for an event that may be missing
};
