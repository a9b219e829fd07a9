// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QString>

/// How an import or export ended. On the bus: (i).
class ImpExpStatus
{
public:
    enum Value : qint32 {
        Success = 0,
        Failure = 1,
        NothingToDo = 2,
    };

    ImpExpStatus(Value value = Success)
        : m_value(value)
    {
    }

    Value value() const { return m_value; }
    /// The enumerator's name, for logs and people; a value from a newer peer is shown as a number.
    QString toString() const;

    bool operator==(const ImpExpStatus &) const = default;

private:
    friend QDBusArgument &operator<<(QDBusArgument &argument, const ImpExpStatus &status);
    friend const QDBusArgument &operator>>(const QDBusArgument &argument, ImpExpStatus &status);

    Value m_value;
};

QDBusArgument &operator<<(QDBusArgument &argument, const ImpExpStatus &status);
const QDBusArgument &operator>>(const QDBusArgument &argument, ImpExpStatus &status);

/// Registers "ImpExpStatus" with the meta-type system and the bus.
void registerDBusImpExpStatus();

Q_DECLARE_METATYPE(ImpExpStatus)
