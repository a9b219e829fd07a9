// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/BusSession.h"
#include "platform/records/EventArgument.h"

#include <QObject>

/// The events of a module as they come. Every event that the module raises after the constructor has returned is
/// reported, in order, once the event loop runs.
class EventStream : public QObject
{
    Q_OBJECT

public:
    /// Without names: all events. Without a module: the events of the directory. Throws CommandFailure when the bus
    /// cannot be reached.
    explicit EventStream(const BusSession &bus, const QStringList &eventNames = {}, const QString &module = {});

Q_SIGNALS:
    void received(const QString &eventName, const ListEventArgument &arguments);
    void disconnected();

private:
    void subscribe(QDBusConnection &connection, const QString &module, const QStringList &match);
};
