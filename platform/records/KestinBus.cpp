// SPDX-License-Identifier: Apache-2.0
#include "platform/records/KestinBus.h"

QString KestinBus::serviceName(const QString &module)
{
    return QLatin1String("com.norlan.Kestin.") + module;
}

QString KestinBus::objectPath(const QString &module)
{
    return QLatin1String("/com/norlan/Kestin/") + module;
}

QDBusConnection KestinBus::connect()
{
    const QString bus = qEnvironmentVariable("KESTIN_BUS", QStringLiteral("system"));
    if (bus == QLatin1String("system"))
        return QDBusConnection::systemBus();
    if (bus == QLatin1String("session"))
        return QDBusConnection::sessionBus();
    return QDBusConnection::connectToBus(bus, QStringLiteral("kestin"));
}
