// SPDX-License-Identifier: Apache-2.0
#include "client/bus/EventStream.h"

#include "client/bus/DirectoryService.h"
#include "platform/records/KestinBus.h"

EventStream::EventStream(const BusSession &bus, const QStringList &eventNames, const QString &module)
{
    QDBusConnection connection = bus.connection();
    const QString sender = module.isEmpty() ? QString(ModuleName::directory) : module;
    if (eventNames.isEmpty())
        subscribe(connection, sender, {});
    for (const QString &eventName : eventNames)
        subscribe(connection, sender, {eventName});
    connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                       QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                       SIGNAL(disconnected()));
    // The bus handles one connection's messages in order: once it has answered this, the subscriptions are in force.
    bus.isRunning(sender);
}

void EventStream::subscribe(QDBusConnection &connection, const QString &module, const QStringList &match)
{
    const bool subscribed = connection.connect(
        KestinBus::serviceName(module), KestinBus::objectPath(module), QLatin1String(KestinBus::eventInterface),
        QLatin1String(KestinBus::eventSignal), match, QLatin1String(KestinBus::eventSignature), this,
        SIGNAL(received(QString, ListEventArgument)));
    if (!subscribed)
        throw CommandFailure(
            ExitCode::NoService,
            QStringLiteral("the events of %1 cannot be subscribed: %2").arg(module, connection.lastError().message()));
}

#include "moc_EventStream.cpp"
