// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/PopupQueue.h"

#include "platform/framework/KestinLogger.h"

PopupQueue::PopupQueue()
{
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, this, &PopupQueue::next);
}

void PopupQueue::add(const QString &text, int seconds)
{
    if (text.trimmed().isEmpty())
        return;
    if (m_popups.size() >= most) {
        KestinLogger::warning("A popup is left out, %1 wait: %2", most, text.left(100));
        return;
    }
    constexpr int usual = 8;
    constexpr int longestTime = 3600;
    m_popups.enqueue({text.left(longest), seconds > 0 ? std::min(seconds, longestTime) : usual});
    if (m_popups.size() == 1)
        show();
    else
        Q_EMIT changed();
}

void PopupQueue::next()
{
    if (!m_popups.isEmpty())
        m_popups.dequeue();
    show();
}

void PopupQueue::show()
{
    if (m_popups.isEmpty())
        m_end.stop();
    else
        m_end.start(std::chrono::seconds(m_popups.head().seconds));
    Q_EMIT changed();
}

#include "moc_PopupQueue.cpp"
