// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QString>

inline constexpr QLatin1String STR_KESTIN_MODE_UNKNOWN("unknown");
inline constexpr QLatin1String STR_KESTIN_MODE_BASIC("basic");
inline constexpr QLatin1String STR_KESTIN_MODE_ADVANCED("advanced");

/// The mode in which the phone's telephony runs, as its text. On the bus: (s).
struct KestinMode
{
    QString text = STR_KESTIN_MODE_UNKNOWN;

    bool operator==(const KestinMode &) const = default;
};

QDBusArgument &operator<<(QDBusArgument &argument, const KestinMode &mode);
const QDBusArgument &operator>>(const QDBusArgument &argument, KestinMode &mode);

/// Registers "KestinMode" with the meta-type system and the bus.
void registerDBusKestinMode();

Q_DECLARE_METATYPE(KestinMode)
