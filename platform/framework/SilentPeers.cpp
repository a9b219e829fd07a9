// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/SilentPeers.h"

#include <QDBusError>

#include <chrono>

namespace {
constexpr std::chrono::seconds pauseAfterSilence{10};
}

bool SilentPeers::isSilent(const QString &module) const
{
    const auto pause = m_pauses.constFind(module);
    return pause != m_pauses.cend() && !pause->hasExpired();
}

void SilentPeers::note(const QString &module, const QDBusMessage &reply)
{
    const QDBusError::ErrorType error = QDBusError(reply).type();
    if (error == QDBusError::NoReply || error == QDBusError::Timeout || error == QDBusError::TimedOut)
        m_pauses.insert(module, QDeadlineTimer(pauseAfterSilence));
    else
        m_pauses.remove(module);
}
