// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QObject>

#include <optional>
#include <utility>

/// What telephony made of one number; the number itself where that is nothing.
inline QString formOf(const std::optional<QStringList> &forms, const QString &number)
{
    return forms && forms->size() == 1 && !forms->first().isEmpty() ? forms->first() : number;
}

/// Calls of other modules that hold up no frame.
class ModuleCalls
{
public:
    explicit ModuleCalls(RemoteCaller &caller)
        : m_caller(caller)
    {
    }

    /// Gives the answer, an std::optional<T>, to `answered` once the event loop runs; nothing when the module is not
    /// there, refuses, stays silent for 5 s, or answers a value of another type. `asker` no longer being there, nobody
    /// is told.
    template <typename T, typename Answered>
    void ask(QObject *asker, const QString &module, const char *method, const QVariantList &arguments,
             Answered answered)
    {
        auto *watcher =
            new QDBusPendingCallWatcher(m_caller.asyncRemoteCall(module, QLatin1String(method), arguments), asker);
        ++m_underWay;
        QObject::connect(watcher, &QObject::destroyed, &m_life, [this] { --m_underWay; });
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, asker, [watcher, answered = std::move(answered)] {
            const QDBusPendingReply<T> reply = *watcher;
            watcher->deleteLater();
            answered(reply.isError() ? std::optional<T>() : std::optional<T>(reply.value()));
        });
    }

    /// How many are not answered yet.
    int underWay() const { return m_underWay; }

private:
    RemoteCaller &m_caller;
    int m_underWay = 0;
    QObject m_life; ///< ends the connections that count
};
