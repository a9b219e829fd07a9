// SPDX-License-Identifier: Apache-2.0
#include "client/import/ListCreation.h"

#include "client/bus/DirectoryService.h"
#include "client/text/EventText.h"
#include "platform/records/KestinBus.h"
#include "platform/records/LatinText.h"
#include "platform/records/PlatformEvents.h"

#include <QDBusPendingCallWatcher>
#include <QTimer>

namespace {

using Ids = QMap<QString, QString>;

/// The directory brings only numbers and ids into a form of its own.
bool isSame(const Contact &sent, const Contact &told)
{
    return sent.name == told.name && sent.firstName == told.firstName && sent.misc == told.misc &&
           sent.email == told.email && sent.collaborationId == told.collaborationId;
}

/// Which of those that were sent are told, in whatever form. Where some are missing, those that are told are found by
/// what they hold.
QList<bool> matched(const ListContact &sent, const ListContact &told)
{
    if (told.size() == sent.size())
        return QList<bool>(sent.size(), true);
    QList<bool> result;
    qsizetype next = 0;
    for (const Contact &contact : sent) {
        const bool isTold = next < told.size() && isSame(contact, told.at(next));
        result.append(isTold);
        next += isTold ? 1 : 0;
    }
    return result;
}

} // namespace

struct ListCreation::Request
{
    ListContact sent;
    Handler settled;
    ListContact told;
    bool isTold = false;
    bool isAnswered = false;
};

ListCreation::ListCreation(const BusSession &bus)
    : m_bus(bus)
    , m_events(bus, {EventName::contactsCreated})
{
    connect(&m_events, &EventStream::received, this, &ListCreation::take);
}

void ListCreation::create(const ListContact &contacts, const Handler &settled)
{
    const QString requestId = DirectoryService::newRequestId();
    const auto request = std::make_shared<Request>(Request{contacts, settled, {}});
    for (Contact &contact : request->sent)
        fillLatinNames(contact);
    m_requests.insert(requestId, request);
    auto *watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(ModuleName::directory, QStringLiteral("createLocalContacts"),
                                                    {requestId, QVariant::fromValue(request->sent)}),
                                    this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, requestId](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        takeReply(requestId, finished->reply());
    });
}

void ListCreation::take(const QString &, const ListEventArgument &arguments)
{
    const auto requestId = EventValue::of<QString>(arguments, ArgumentName::reqId);
    const auto found = m_requests.constFind(requestId);
    if (found == m_requests.cend())
        return;
    (*found)->told = EventValue::of<ListContact>(arguments, ArgumentName::contacts);
    (*found)->isTold = true;
    if ((*found)->isAnswered)
        settle(requestId, std::nullopt);
}

/// The event comes before the answer. Should the program see them the other way round, the event is waited for.
void ListCreation::takeReply(const QString &requestId, const QDBusMessage &reply)
{
    const std::shared_ptr<Request> request = m_requests.value(requestId);
    request->isAnswered = true;
    try {
        const bool isEventExpected = !BusSession::valueOf<Ids>(ModuleName::directory, reply).isEmpty();
        if (!isEventExpected || request->isTold)
            return settle(requestId, std::nullopt);
        QTimer::singleShot(m_bus.limit(), this, [this, requestId] {
            settle(requestId,
                   CommandFailure(ExitCode::NoAnswer, QStringLiteral("the directory did not tell what it created")));
        });
    } catch (const CommandFailure &failure) {
        const bool mayBeDone = failure.code() == ExitCode::NoAnswer;
        settle(requestId, mayBeDone ? std::optional(failure) : std::nullopt);
    }
}

void ListCreation::settle(const QString &requestId, const std::optional<CommandFailure> &failure)
{
    if (const std::shared_ptr<Request> request = m_requests.take(requestId))
        request->settled({matched(request->sent, request->told), failure});
}

#include "moc_ListCreation.cpp"
