// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QString>

/// How the platform's modules find each other on the message bus.
namespace KestinBus {

/// Interface of the methods that a module publishes for its users.
inline constexpr char moduleInterface[] = "com.norlan.Kestin.KestinInterface";
/// Interface and name of the signal that carries every platform event: (name s, arguments a(svb)), sent from the
/// object of the module that raises it.
inline constexpr char eventInterface[] = "com.norlan.Kestin.KestinEvent";
inline constexpr char eventSignal[] = "notify";
inline constexpr char eventSignature[] = "sa(svb)";

/// Bus name and object path of a module, by its short name ("SettingsManager").
QString serviceName(const QString &module);
QString objectPath(const QString &module);

/// Connects to the bus that the environment variable KESTIN_BUS names: "system" (also when unset), "session", or a
/// bus address. The connection is cached by Qt: every call of one process returns the same one. Not connected when
/// the bus cannot be reached; lastError() tells why.
QDBusConnection connect();

} // namespace KestinBus
