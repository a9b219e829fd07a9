// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QString>
#include <QVariantList>

#include <chrono>

/// Calls methods of other modules by module and method name. Main thread only.
class RemoteCaller
{
public:
    virtual ~RemoteCaller() = default;

    static constexpr std::chrono::milliseconds callLimit{5000};

    /// Waits for the answer, 5 s at most or as given. A module that is not there, refuses or stays silent is an error
    /// reply. May throw a KestinException when the call cannot be made at all.
    virtual QDBusMessage syncRemoteCall(const QString &module, const QString &method, const QVariantList &arguments,
                                        std::chrono::milliseconds limit = callLimit) = 0;
    /// The same without waiting. Not for a call whose answer nobody reads: each holds one of the 128 places that the
    /// system bus gives a connection until it is answered.
    [[nodiscard]] virtual QDBusPendingCall asyncRemoteCall(const QString &module, const QString &method,
                                                           const QVariantList &arguments) = 0;
    /// Calls and asks for no answer. Nobody there, and a refusal, are no failure; the bus starts the module as for any
    /// other call. May throw as syncRemoteCall does.
    virtual void send(const QString &module, const QString &method, const QVariantList &arguments) = 0;
};
