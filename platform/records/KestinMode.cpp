// SPDX-License-Identifier: Apache-2.0
#include "platform/records/KestinMode.h"

#include <QDBusMetaType>

QDBusArgument &operator<<(QDBusArgument &argument, const KestinMode &mode)
{
    argument.beginStructure();
    argument << mode.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, KestinMode &mode)
{
    argument.beginStructure();
    argument >> mode.text;
    argument.endStructure();
    return argument;
}

void registerDBusKestinMode()
{
    qDBusRegisterMetaType<KestinMode>();
}
