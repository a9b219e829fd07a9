// SPDX-License-Identifier: Apache-2.0
#include "src/search/SearchMailbox.h"

#include <chrono>
#include <utility>

namespace {
constexpr std::chrono::milliseconds waitLimit = 100 * std::chrono::milliseconds(100);
}

void SearchMailbox::open(const QString &searchId)
{
    const std::lock_guard lock(m_mutex);
    m_boxes.insert(searchId, Box());
}

void SearchMailbox::close(const QString &searchId)
{
    const std::lock_guard lock(m_mutex);
    m_boxes.remove(searchId);
}

void SearchMailbox::setStarted(const QString &searchId)
{
    const std::lock_guard lock(m_mutex);
    const auto box = m_boxes.find(searchId);
    if (box == m_boxes.end())
        return;
    box->isStarted = true;
    m_changed.notify_all();
}

void SearchMailbox::put(const QString &searchId, const Answer &answer)
{
    const std::lock_guard lock(m_mutex);
    const auto box = m_boxes.find(searchId);
    if (box == m_boxes.end() || !box->isStarted)
        return;
    box->answer = answer;
    box->isReady = true;
    m_changed.notify_all();
}

void SearchMailbox::setReplaced(bool isReplaced)
{
    const std::lock_guard lock(m_mutex);
    m_isReplaced = isReplaced;
    m_changed.notify_all();
}

bool SearchMailbox::isReplaced() const
{
    const std::lock_guard lock(m_mutex);
    return m_isReplaced;
}

void SearchMailbox::abandon()
{
    const std::lock_guard lock(m_mutex);
    for (Box &box : m_boxes)
        box.isAbandoned = true;
    m_changed.notify_all();
}

void SearchMailbox::end()
{
    const std::lock_guard lock(m_mutex);
    m_hasEnded = true;
    m_isReplaced = true;
    m_changed.notify_all();
}

bool SearchMailbox::waitUntilStarted(const QString &searchId)
{
    std::unique_lock lock(m_mutex);
    const auto box = [&] { return m_boxes.value(searchId); };
    m_changed.wait_for(lock, waitLimit, [&] { return m_hasEnded || box().isAbandoned || box().isStarted; });
    return box().isStarted;
}

bool SearchMailbox::waitForAnswer(const QString &searchId)
{
    std::unique_lock lock(m_mutex);
    const auto box = [&] { return m_boxes.value(searchId); };
    m_changed.wait_for(lock, waitLimit, [&] { return m_isReplaced || box().isAbandoned || box().isReady; });
    return m_isReplaced || box().isReady;
}

SearchMailbox::Answer SearchMailbox::take(const QString &searchId)
{
    const std::lock_guard lock(m_mutex);
    const auto box = m_boxes.find(searchId);
    if (box == m_boxes.end())
        return {};
    box->isReady = false;
    return std::exchange(box->answer, Answer());
}
