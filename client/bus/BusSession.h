// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/CommandFailure.h"

#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QVariantList>

#include <chrono>

/// The program's connection to the message bus, made at the first use, and calls to the platform's modules over it. The
/// program asks nothing by introspection: the text that the directory publishes differs from the values it answers.
class BusSession
{
public:
    /// `limit` is how long a call waits for its answer.
    explicit BusSession(std::chrono::milliseconds limit);

    std::chrono::milliseconds limit() const { return m_limit; }

    /// Throws CommandFailure when the bus cannot be reached.
    QDBusConnection connection() const;

    /// The value that a module's method answers. Throws BusFailure, or CommandFailure when the answer is not a single
    /// value of this type.
    template <typename T>
    T call(const QString &module, const QString &method, const QVariantList &arguments) const
    {
        return valueOf<T>(module, answer(module, method, arguments));
    }

    QDBusPendingCall asyncCall(const QString &module, const QString &method, const QVariantList &arguments) const;

    /// The single value in a reply. Throws as `call` does.
    template <typename T>
    static T valueOf(const QString &module, const QDBusMessage &reply)
    {
        expect(module, reply, QLatin1String(QDBusMetaType::typeToSignature(QMetaType::fromType<T>())));
        return qdbus_cast<T>(reply.arguments().constFirst());
    }

    /// Whether the module's name is on the bus now.
    bool isRunning(const QString &module) const;
    /// Whether the module is running, or the bus starts it at the first call.
    bool isReachable(const QString &module) const;

private:
    QDBusMessage answer(const QString &module, const QString &method, const QVariantList &arguments) const;
    static void expect(const QString &module, const QDBusMessage &reply, const QString &signature);

    std::chrono::milliseconds m_limit;
};
