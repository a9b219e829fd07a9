// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"

/// The way to the settings manager. While the directory starts, which others wait for, a manager that hangs is given 5
/// s in all and then 1 s a call; after that every call has the usual limit.
class SettingsCaller : public RemoteCaller
{
public:
    explicit SettingsCaller(RemoteCaller &caller)
        : m_caller(caller)
    {
    }

    void setStarted() { m_isStarting = false; }

    QDBusMessage syncRemoteCall(const QString &module, const QString &method, const QVariantList &arguments,
                                std::chrono::milliseconds limit = callLimit) override;
    [[nodiscard]] QDBusPendingCall asyncRemoteCall(const QString &module, const QString &method,
                                                   const QVariantList &arguments) override
    {
        return m_caller.asyncRemoteCall(module, method, arguments);
    }
    void send(const QString &module, const QString &method, const QVariantList &arguments) override
    {
        m_caller.send(module, method, arguments);
    }

private:
    RemoteCaller &m_caller;
    bool m_isStarting = true;
    std::chrono::milliseconds m_waited{0}; ///< for all calls since the start
};
