// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QString>
#include <QVariantList>

#include <chrono>

/// Calls methods of other modules by module and method name.
class RemoteCaller
{
public:
    virtual ~RemoteCaller() = default;

    static constexpr std::chrono::milliseconds callLimit{5000};

    /// Waits for the answer, 5 s at most or as given. The result is an error reply when the module is not there,
    /// refuses or stays silent. May throw a KestinException when the call cannot be made at all.
    virtual QDBusMessage syncRemoteCall(const QString &module, const QString &method, const QVariantList &arguments,
                                        std::chrono::milliseconds limit = callLimit) = 0;
    /// The same without waiting. Not for a call whose answer nobody reads: until it is answered, a call holds a place
    /// of the 128 that the system bus gives a connection.
    [[nodiscard]] virtual QDBusPendingCall asyncRemoteCall(const QString &module, const QString &method,
                                                           const QVariantList &arguments) = 0;
    /// Calls and asks for no answer. It is no failure when nobody is there or the module refuses. The bus starts the
    /// module as for any other call. May throw as syncRemoteCall does.
    virtual void send(const QString &module, const QString &method, const QVariantList &arguments) = 0;
};
