// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariantList>

/// The short names of the platform's modules. KestinBus makes bus names and object paths of them.
namespace ModuleName {
inline constexpr QLatin1String directory("KestinDirectory");   ///< the contacts of the phone
inline constexpr QLatin1String settings("SettingsManager");    ///< the settings of the phone
inline constexpr QLatin1String telephony("Telephony");         ///< the forms of numbers, and the mode of the phone
inline constexpr QLatin1String webServiceManager("WSManager"); ///< the way to the company directory
inline constexpr QLatin1String presentation("Presentation");   ///< popups on the screen
} // namespace ModuleName

/// How the platform's modules find each other on the message bus.
namespace KestinBus {

/// Interface of the methods that a module publishes for its users.
inline constexpr char moduleInterface[] = "com.norlan.Kestin.KestinInterface";
/// Interface and name of the signal that carries every platform event: (name s, arguments a(svb)), sent from the
/// object of the module that raises it.
inline constexpr char eventInterface[] = "com.norlan.Kestin.KestinEvent";
inline constexpr char eventSignal[] = "notify";
inline constexpr char eventSignature[] = "sa(svb)";

/// What the bus names of the modules and the names of the platform's own errors begin with.
inline constexpr QLatin1String prefix("com.norlan.Kestin.");
/// The error with which a module refuses a call; its message is a sentence.
inline constexpr QLatin1String exceptionError("com.norlan.Kestin.KestinException");

/// Bus name and object path of a module, by its short name.
QString serviceName(const QString &module);
QString objectPath(const QString &module);

/// The call of a module's method, ready to be sent.
QDBusMessage methodCall(const QString &module, const QString &method, const QVariantList &arguments = {});

/// Connects to the bus that the environment variable KESTIN_BUS names: "system" (also when unset), "session", or a
/// bus address. The connection is cached by Qt: every call of a process returns the same connection. Not connected when
/// the bus cannot be reached; lastError() tells why.
QDBusConnection connect();

} // namespace KestinBus
