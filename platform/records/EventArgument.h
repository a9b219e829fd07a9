// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QVariant>

/// One argument of a platform event. On the bus: (svb).
struct EventArgument
{
    QString name;
    QVariant value; ///< a plain value, or a QDBusArgument holding a record when it came over the bus
    bool flag = true;
};

/// On the bus: a(svb), the second argument of an event's signal; the first is its name.
using ListEventArgument = QList<EventArgument>;

QDBusArgument &operator<<(QDBusArgument &argument, const EventArgument &eventArgument);
const QDBusArgument &operator>>(const QDBusArgument &argument, EventArgument &eventArgument);

void registerDBusEventArgument();

/// Whether the value came over the bus as a record or list with the signature of this type. Unpacking any other ends
/// the process inside the bus library.
bool canBeUnpacked(const QVariant &value, const QMetaType &type);

Q_DECLARE_METATYPE(EventArgument)
