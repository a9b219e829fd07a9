// SPDX-License-Identifier: Apache-2.0
#include "platform/records/ImpExpStatus.h"

#include <QDBusMetaType>

QString ImpExpStatus::toString() const
{
    switch (m_value) {
    case Success:
        return QStringLiteral("Success");
    case Failure:
        return QStringLiteral("Failure");
    case NothingToDo:
        return QStringLiteral("NothingToDo");
    }
    return QString::number(m_value);
}

QDBusArgument &operator<<(QDBusArgument &argument, const ImpExpStatus &status)
{
    argument.beginStructure();
    argument << qint32(status.m_value);
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ImpExpStatus &status)
{
    qint32 value = 0;
    argument.beginStructure();
    argument >> value;
    argument.endStructure();
    status.m_value = ImpExpStatus::Value(value);
    return argument;
}

void registerDBusImpExpStatus()
{
    qDBusRegisterMetaType<ImpExpStatus>();
}
