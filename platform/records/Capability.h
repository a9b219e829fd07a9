// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QMap>
#include <QString>

/// Something a module can do, by name. A capability that a module does not have counts as a capability with value 0.
/// On the bus: (si).
struct Capability
{
    QString name;
    qint32 value = 0;

    bool operator==(const Capability &) const = default;
};

using MapQStringCapability = QMap<QString, Capability>;

QDBusArgument &operator<<(QDBusArgument &argument, const Capability &capability);
const QDBusArgument &operator>>(const QDBusArgument &argument, Capability &capability);

/// Registers "Capability" and "MapQStringCapability" with the meta-type system and the bus.
void registerDBusCapability();

Q_DECLARE_METATYPE(Capability)
