// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/SilentPeers.h"

#include <QDBusError>

#include <chrono>

namespace {
constexpr std::chrono::seconds pauseAfterSilence{10};
}

bool SilentPeers::isPaused(const QString &module) const
{
    const auto pause = m_pauses.constFind(module);
    return pause != m_pauses.cend() && !pause->end.hasExpired();
}

bool SilentPeers::isSilent(const QString &module, const QString &owner) const
{
    return isPaused(module) && m_pauses.value(module).owner == owner;
}

void SilentPeers::add(const QString &module, const QString &owner)
{
    m_pauses.insert(module, {QDeadlineTimer(pauseAfterSilence), owner});
}

bool SilentPeers::isSilence(const QDBusMessage &reply)
{
    const QDBusError::ErrorType error = QDBusError(reply).type();
    return error == QDBusError::NoReply || error == QDBusError::Timeout || error == QDBusError::TimedOut;
}
