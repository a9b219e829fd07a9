// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/BusSession.h"
#include "platform/records/EventArgument.h"

#include <QObject>

/// The directory's events as they come. Whatever the directory raises after the constructor has returned is reported,
/// once the event loop runs.
class EventStream : public QObject
{
    Q_OBJECT

public:
    /// Events of this name; an empty one: all of them. Throws CommandFailure when the bus cannot be reached.
    explicit EventStream(const BusSession &bus, const QString &eventName = {});

Q_SIGNALS:
    void received(const QString &eventName, const ListEventArgument &arguments);
    void disconnected();
};
