// SPDX-License-Identifier: Apache-2.0
#include "platform/records/EventArgument.h"

#include <QDBusMetaType>
#include <QDBusVariant>

QDBusArgument &operator<<(QDBusArgument &argument, const EventArgument &eventArgument)
{
    argument.beginStructure();
    argument << eventArgument.name << QDBusVariant(eventArgument.value) << eventArgument.flag;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, EventArgument &eventArgument)
{
    QDBusVariant value;
    argument.beginStructure();
    argument >> eventArgument.name >> value >> eventArgument.flag;
    argument.endStructure();
    eventArgument.value = value.variant();
    return argument;
}

void registerDBusEventArgument()
{
    qDBusRegisterMetaType<EventArgument>();
    qDBusRegisterMetaType<ListEventArgument>();
    qRegisterMetaType<ListEventArgument>("ListEventArgument");
}

bool canBeUnpacked(const QVariant &value, const QMetaType &type)
{
    return value.metaType() == QMetaType::fromType<QDBusArgument>() &&
           value.value<QDBusArgument>().currentSignature() == QLatin1String(QDBusMetaType::typeToSignature(type));
}
