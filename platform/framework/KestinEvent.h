// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/EventArgument.h"

#include <QString>
#include <QVariant>

/// A named platform event with named arguments in a fixed order.
class KestinEvent
{
public:
    KestinEvent() = default;
    KestinEvent(const QString &name, const ListEventArgument &arguments);

    void setEvtName(const QString &name) { m_name = name; }
    QString getEvtName() const { return m_name; }

    void addArgument(const QVariant &value, const QString &name, bool flag);
    const ListEventArgument &arguments() const { return m_arguments; }

    /// The value of the first argument of this name, as T. A default T when no argument has this name, or when QVariant
    /// cannot convert its value. Records that came over the bus are unpacked.
    template <typename T>
    T argument(const QString &name) const
    {
        const QVariant argument = value(name);
        return canBeUnpacked(argument, QMetaType::fromType<T>()) ? qdbus_cast<T>(argument) : argument.value<T>();
    }

private:
    QVariant value(const QString &name) const;

    QString m_name;
    ListEventArgument m_arguments;
};

Q_DECLARE_METATYPE(KestinEvent)
