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

void SearchMailbox::setReplaced(const QString &searchId)
{
    const std::lock_guard lock(m_mutex);
    const auto box = m_boxes.find(searchId);
    if (box == m_boxes.end())
        return;
    box->isReplaced = true;
    m_changed.notify_all();
}

bool SearchMailbox::isReplaced(const QString &searchId) const
{
    const std::lock_guard lock(m_mutex);
    return m_hasEnded || m_boxes.value(searchId).isReplaced;
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
    const auto isOver = [&] { return m_hasEnded || box().isReplaced || box().isReady; };
    m_changed.wait_for(lock, waitLimit, [&] { return isOver() || box().isAbandoned; });
    return isOver();
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
