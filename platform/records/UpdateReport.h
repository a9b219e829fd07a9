// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QString>

/// The settings manager's answer to a write. On the bus: (is).
struct UpdateReport
{
    qint32 code = 0; ///< 0: written
    QString message; ///< why not, for people

    bool operator==(const UpdateReport &) const = default;
};

QDBusArgument &operator<<(QDBusArgument &argument, const UpdateReport &report);
const QDBusArgument &operator>>(const QDBusArgument &argument, UpdateReport &report);

/// Registers "UpdateReport" with the meta-type system and the bus.
void registerDBusUpdateReport();

Q_DECLARE_METATYPE(UpdateReport)
