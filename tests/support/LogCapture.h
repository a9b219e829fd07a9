// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinLogger.h"

#include <QStringList>

#include <mutex>

/// Collects what is logged while it lives, at a level of its choice, by any thread. The lines keep their prefix
/// ("<7>…"). `lines` itself is for when no other thread logs.
class LogCapture
{
public:
    explicit LogCapture(int level = KestinLogger::Debug)
    {
        KestinLogger::setLevel(level);
        KestinLogger::setSink([this](const QByteArray &line) {
            const std::lock_guard lock(m_mutex);
            lines.append(QString::fromUtf8(line));
        });
    }
    ~LogCapture()
    {
        KestinLogger::setSink({});
        KestinLogger::setLevel(KestinLogger::Warning);
    }

    bool contains(const QString &line) const
    {
        const std::lock_guard lock(m_mutex);
        return lines.contains(line);
    }

    QStringList lines;

private:
    mutable std::mutex m_mutex;
};
