// SPDX-License-Identifier: Apache-2.0
#include "platform/records/Capability.h"

#include <QDBusMetaType>

QDBusArgument &operator<<(QDBusArgument &argument, const Capability &capability)
{
    argument.beginStructure();
    argument << capability.name << capability.value;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Capability &capability)
{
    argument.beginStructure();
    argument >> capability.name >> capability.value;
    argument.endStructure();
    return argument;
}

void registerDBusCapability()
{
    qDBusRegisterMetaType<Capability>();
    qDBusRegisterMetaType<MapQStringCapability>();
    qRegisterMetaType<MapQStringCapability>("MapQStringCapability");
}
