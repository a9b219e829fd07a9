// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/EventStream.h"
#include "platform/records/Contact.h"

#include <QDBusMessage>
#include <QHash>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

/// Creates many contacts with a single call, in a single durable write, and answers for each whether it was created.
/// The call's own answer does not tell that; the event of the write does, which names them in their order.
class ListCreation : public QObject
{
    Q_OBJECT

public:
    struct Answer
    {
        QList<bool> isCreated; ///< for each contact in its order
        /// Why it is not known of the others whether they were created. None when they were not: called alone, the
        /// directory tells why.
        std::optional<CommandFailure> failure;
    };
    using Handler = std::function<void(const Answer &answer)>;

    /// `bus` outlives this object. Throws CommandFailure when the bus cannot be reached.
    explicit ListCreation(const BusSession &bus);

    /// The latin names of the contacts are made here, as this call leaves them to the caller. None may be anonymous.
    void create(const ListContact &contacts, const Handler &settled);

private:
    struct Request;

    void take(const QString &eventName, const ListEventArgument &arguments);
    void takeReply(const QString &requestId, const QDBusMessage &reply);
    void settle(const QString &requestId, const std::optional<CommandFailure> &failure);

    const BusSession &m_bus;
    EventStream m_events;
    QHash<QString, std::shared_ptr<Request>> m_requests;
};
