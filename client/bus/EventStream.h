// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/BusSession.h"
#include "platform/records/EventArgument.h"

#include <QObject>

/// The events of a module, the directory if not said otherwise, as they come. Whatever it raises after the constructor
/// has returned is reported, in order, once the event loop runs.
class EventStream : public QObject
{
    Q_OBJECT

public:
    /// Events of these names; without names: all of them. Throws CommandFailure when the bus cannot be reached.
    explicit EventStream(const BusSession &bus, const QStringList &eventNames = {}, const QString &module = {});

Q_SIGNALS:
    void received(const QString &eventName, const ListEventArgument &arguments);
    void disconnected();

private:
    void subscribe(QDBusConnection &connection, const QString &module, const QStringList &match);
};
