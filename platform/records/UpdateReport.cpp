// SPDX-License-Identifier: Apache-2.0
#include "platform/records/UpdateReport.h"

#include <QDBusMetaType>

QDBusArgument &operator<<(QDBusArgument &argument, const UpdateReport &report)
{
    argument.beginStructure();
    argument << report.code << report.message;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, UpdateReport &report)
{
    argument.beginStructure();
    argument >> report.code >> report.message;
    argument.endStructure();
    return argument;
}

void registerDBusUpdateReport()
{
    qDBusRegisterMetaType<UpdateReport>();
}
