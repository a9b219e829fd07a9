// SPDX-License-Identifier: Apache-2.0
#include "client/bus/EventRaising.h"

#include "client/bus/CommandFailure.h"
#include "platform/records/KestinBus.h"

void raiseEvent(const BusSession &bus, const QString &module, const QString &event, const ListEventArgument &arguments)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        KestinBus::objectPath(module), QLatin1String(KestinBus::eventInterface), QLatin1String(KestinBus::eventSignal));
    signal << event << QVariant::fromValue(arguments);
    if (!bus.connection().send(signal))
        throw CommandFailure(
            ExitCode::NoService,
            QStringLiteral("the event %1 cannot be raised: %2").arg(event, bus.connection().lastError().message()));
    bus.isRunning(module); // once the bus has answered this, the event is out
}
