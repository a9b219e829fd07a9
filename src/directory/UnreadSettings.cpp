// SPDX-License-Identifier: Apache-2.0
#include "src/directory/UnreadSettings.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"
#include "platform/framework/RemoteCaller.h"
#include "platform/records/KestinBus.h"

#include <QDBusPendingCallWatcher>
#include <QDBusReply>

#include <algorithm>

namespace {
constexpr std::chrono::milliseconds firstPause{5000};
constexpr std::chrono::milliseconds longestPause{60000};
} // namespace

UnreadSettings::UnreadSettings(RemoteCaller &caller)
    : m_caller(caller)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(firstPause);
    connect(&m_timer, &QTimer::timeout, this, qOverload<>(&UnreadSettings::ask));
}

void UnreadSettings::add(const QString &key)
{
    m_keys.insert(key);
    m_timer.start(firstPause);
}

void UnreadSettings::ask()
{
    const QSet<QString> keys = m_keys;
    for (const QString &key : keys)
        ask(key);
    if (!keys.isEmpty())
        m_timer.start(std::min(2 * m_timer.intervalAsDuration(), longestPause));
}

void UnreadSettings::ask(const QString &key)
{
    try {
        auto *watcher = new QDBusPendingCallWatcher(
            m_caller.asyncRemoteCall(ModuleName::settings, QStringLiteral("getSettingValue"), {key}), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, key, watcher] {
            watcher->deleteLater();
            take(key, watcher->reply());
        });
    } catch (const KestinException &exception) {
        KestinLogger::error("ERROR: While getting value of %1:\n%2", key, exception.message());
    }
}

void UnreadSettings::take(const QString &key, const QDBusMessage &message)
{
    const QDBusReply<QString> reply = message;
    // A refusal by the manager itself is an answer too: it has no such setting.
    const bool isAnswer = reply.isValid() || reply.error().name() == KestinBus::exceptionError;
    if (!isAnswer || !m_keys.remove(key) || !reply.isValid())
        return;
    KestinLogger::info("The setting %1, which could not be read before, has come", key);
    Q_EMIT answered(key, reply.value());
}

#include "moc_UnreadSettings.cpp"
