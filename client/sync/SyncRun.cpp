// SPDX-License-Identifier: Apache-2.0
#include "client/sync/SyncRun.h"

#include "client/sync/SyncFile.h"
#include "client/text/EventText.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QDBusError>

namespace {

/// The directory answers the call when it has done the work, however long that takes; the wait has the limit.
constexpr std::chrono::hours callLimit(24);

} // namespace

SyncRun::SyncRun(const BusSession &bus, std::chrono::milliseconds limit)
    : m_bus(bus)
    , m_patientBus(callLimit)
    , m_limit(limit)
    , m_wait(bus)
{
}

SyncRun::Outcome SyncRun::exportTo(const ExportRequest &request)
{
    m_wait.setLimit(m_limit, [path = request.path] { return SyncFile::bytesWritten(path); });
    return run(EventName::exportFinished,
               [&request](const DirectoryService &directory) { return directory.exportToXml(request); });
}

SyncRun::Outcome SyncRun::importFrom(const QString &path)
{
    m_wait.setLimit(m_limit);
    return run(EventName::importFinished,
               [&path](const DirectoryService &directory) { return directory.importFromXml(path); });
}

SyncRun::Outcome SyncRun::run(const QString &eventName,
                              const std::function<QDBusPendingCall(const DirectoryService &)> &call)
{
    m_wait.listen({eventName}, ModuleName::directory);
    const QDBusPendingCallWatcher watcher(call(DirectoryService(m_patientBus)));
    connect(&watcher, &QDBusPendingCallWatcher::finished, this,
            [this](const QDBusPendingCallWatcher *finished) { takeReply(finished->reply()); });
    const EventWait::End end = m_wait.run([this](const QString &, const ListEventArgument &arguments) {
        m_outcome = Outcome{EventValue::of<ImpExpStatus>(arguments, ArgumentName::status),
                            EventValue::of<QString>(arguments, ArgumentName::cause)};
        return m_isAnswered;
    });
    if (end == EventWait::End::Interrupted)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("interrupted; the directory goes on with it"));
    if (end == EventWait::End::TimedOut)
        throw CommandFailure(ExitCode::NoAnswer, QStringLiteral("the directory did not tell the end within the limit; "
                                                                "it may still be at it"));
    return *m_outcome;
}

/// The event does not tell whose run it is about. Runs are served one after the other, so this one's event is the last
/// before the answer to its call. An import that is refused has an answer and no event.
void SyncRun::takeReply(const QDBusMessage &reply)
{
    // That somebody between here and there did not want to wait for the answer ends nothing.
    if (QDBusError(reply).type() == QDBusError::NoReply)
        return;
    m_isAnswered = true;
    if (reply.type() == QDBusMessage::ErrorMessage)
        m_wait.fail(BusFailure(ModuleName::directory, reply));
    else if (m_outcome)
        m_wait.finish();
    else
        lookForEvent();
}

/// Events come over another connection than the answer did: whatever was sent before a call that is answered there is
/// here.
void SyncRun::lookForEvent()
{
    m_look.emplace(m_bus.asyncCall(ModuleName::directory, QStringLiteral("getCapabilities"), {}));
    connect(&*m_look, &QDBusPendingCallWatcher::finished, this, [this] {
        if (!m_outcome)
            m_wait.fail(CommandFailure(
                ExitCode::Refused, QStringLiteral("the directory refused it: another import is going on; try again")));
    });
}

#include "moc_SyncRun.cpp"
