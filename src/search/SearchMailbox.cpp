// SPDX-License-Identifier: Apache-2.0
#include "src/search/SearchMailbox.h"

#include <QDeadlineTimer>
#include <QMutexLocker>

#include <chrono>
#include <utility>

namespace {
constexpr std::chrono::milliseconds waitLimit = 100 * std::chrono::milliseconds(100);
}

void SearchMailbox::open(const QString &searchId)
{
    const QMutexLocker lock(&m_mutex);
    m_boxes.insert(searchId, Box());
}

void SearchMailbox::close(const QString &searchId)
{
    const QMutexLocker lock(&m_mutex);
    m_boxes.remove(searchId);
}

void SearchMailbox::setStarted(const QString &searchId)
{
    const QMutexLocker lock(&m_mutex);
    const auto box = m_boxes.find(searchId);
    if (box == m_boxes.end())
        return;
    box->isStarted = true;
    m_changed.wakeAll();
}

void SearchMailbox::put(const QString &searchId, const Answer &answer)
{
    const QMutexLocker lock(&m_mutex);
    const auto box = m_boxes.find(searchId);
    if (box == m_boxes.end())
        return;
    box->answer = answer;
    box->isReady = true;
    m_changed.wakeAll();
}

void SearchMailbox::setReplaced(bool isReplaced)
{
    const QMutexLocker lock(&m_mutex);
    m_isReplaced = isReplaced;
    m_changed.wakeAll();
}

bool SearchMailbox::isReplaced() const
{
    const QMutexLocker lock(&m_mutex);
    return m_isReplaced;
}

void SearchMailbox::end()
{
    const QMutexLocker lock(&m_mutex);
    m_hasEnded = true;
    m_isReplaced = true;
    m_changed.wakeAll();
}

bool SearchMailbox::waitUntilStarted(const QString &searchId)
{
    const QDeadlineTimer limit(waitLimit);
    QMutexLocker lock(&m_mutex);
    while (!m_boxes.value(searchId).isStarted) {
        if (m_hasEnded || !m_changed.wait(&m_mutex, limit))
            return m_boxes.value(searchId).isStarted;
    }
    return true;
}

bool SearchMailbox::waitForAnswer(const QString &searchId)
{
    const QDeadlineTimer limit(waitLimit);
    QMutexLocker lock(&m_mutex);
    while (!m_boxes.value(searchId).isReady && !m_isReplaced) {
        if (!m_changed.wait(&m_mutex, limit))
            return m_boxes.value(searchId).isReady;
    }
    return true;
}

SearchMailbox::Answer SearchMailbox::take(const QString &searchId)
{
    const QMutexLocker lock(&m_mutex);
    const auto box = m_boxes.find(searchId);
    if (box == m_boxes.end())
        return {};
    box->isReady = false;
    return std::exchange(box->answer, Answer());
}
