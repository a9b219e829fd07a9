// SPDX-License-Identifier: Apache-2.0
#include "platform/records/KestinBus.h"

QString KestinBus::serviceName(const QString &module)
{
    return prefix + module;
}

QString KestinBus::objectPath(const QString &module)
{
    return QLatin1String("/com/norlan/Kestin/") + module;
}

QDBusMessage KestinBus::methodCall(const QString &module, const QString &method, const QVariantList &arguments)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(serviceName(module), objectPath(module), QLatin1String(moduleInterface), method);
    call.setArguments(arguments);
    return call;
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
