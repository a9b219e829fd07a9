// SPDX-License-Identifier: Apache-2.0
#include "src/directory/SettingsCaller.h"

#include <QElapsedTimer>

#include <algorithm>

QDBusMessage SettingsCaller::syncRemoteCall(const QString &module, const QString &method, const QVariantList &arguments,
                                            std::chrono::milliseconds limit)
{
    constexpr std::chrono::seconds patience{5};
    constexpr std::chrono::milliseconds leastLimit{1000};
    if (!m_isStarting)
        return m_caller.syncRemoteCall(module, method, arguments, limit);
    QElapsedTimer timer;
    timer.start();
    const QDBusMessage reply =
        m_caller.syncRemoteCall(module, method, arguments, std::min(limit, std::max(patience - m_waited, leastLimit)));
    m_waited += std::chrono::milliseconds(timer.elapsed());
    return reply;
}
