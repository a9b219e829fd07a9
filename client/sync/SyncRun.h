// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/DirectoryService.h"
#include "client/bus/EventWait.h"
#include "platform/records/ImpExpStatus.h"

#include <QDBusPendingCallWatcher>
#include <QString>

#include <optional>

/// The synchronisation file as this program sees it. It is the directory that reads and writes it, perhaps as another
/// user, so whatever cannot be told here is no failure.
namespace SyncFile {

/// How many contacts stand in the file; none when it cannot be read to its end.
std::optional<int> countContacts(const QString &path);

/// Bytes in the files that belong to `path` while it is being written, whatever the unfinished one is called: those
/// in its folder whose names hold its name.
qint64 bytesWritten(const QString &path);

} // namespace SyncFile

/// One export or import of the synchronisation file, from the call to the event that tells how it ended.
class SyncRun : public QObject
{
    Q_OBJECT

public:
    struct Outcome
    {
        ImpExpStatus status;
        QString cause; ///< of a failure; of an import, also the contacts that were left out, a line each
    };

    /// `limit` is how long a run that does not seem to go on is waited for. An export that still writes goes on.
    SyncRun(const BusSession &bus, std::chrono::milliseconds limit);

    /// One of them, once. Throw CommandFailure when the directory cannot be reached, ends meanwhile or does not tell
    /// the end within the limit, and when it is interrupted.
    Outcome exportTo(const ExportRequest &request);
    Outcome importFrom(const QString &path);
    void interrupt() { m_wait.interrupt(); }

private:
    Outcome run(const QString &eventName, const std::function<QDBusPendingCall(const DirectoryService &)> &call);
    void takeReply(const QDBusMessage &reply);

    BusSession m_patientBus;
    std::chrono::milliseconds m_limit;
    EventWait m_wait;
    std::optional<Outcome> m_outcome;
    bool m_isAnswered = false;
};
