// SPDX-License-Identifier: Apache-2.0
#include "client/bus/EventStream.h"

#include "client/bus/DirectoryService.h"
#include "platform/records/KestinBus.h"

EventStream::EventStream(const BusSession &bus, const QString &eventName)
{
    QDBusConnection connection = bus.connection();
    const QStringList match = eventName.isEmpty() ? QStringList() : QStringList{eventName};
    const bool subscribed = connection.connect(
        KestinBus::serviceName(DirectoryService::module), KestinBus::objectPath(DirectoryService::module),
        QLatin1String(KestinBus::eventInterface), QLatin1String(KestinBus::eventSignal), match,
        QLatin1String(KestinBus::eventSignature), this, SIGNAL(received(QString, ListEventArgument)));
    if (!subscribed)
        throw CommandFailure(ExitCode::NoService, QStringLiteral("the events of the directory cannot be subscribed: %1")
                                                      .arg(connection.lastError().message()));
    connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                       QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                       SIGNAL(disconnected()));
    // The bus handles one connection's messages in order: once it has answered this, the subscription is in force.
    bus.isRunning(DirectoryService::module);
}
