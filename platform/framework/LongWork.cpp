// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/LongWork.h"

#include <QDBusPendingCallWatcher>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds longestBreak{5};

} // namespace

Work::~Work()
{
    if (!m_handle)
        return;
    if (m_handle.promise().doer)
        m_handle.promise().doer->forget(m_handle);
    m_handle.destroy();
}

void Work::await_suspend(Handle outer) const
{
    outer.promise().doer->push(m_handle);
}

void Work::await_resume() const
{
    if (m_handle.promise().thrown)
        std::rethrow_exception(m_handle.promise().thrown);
}

LongWork::LongWork()
{
    m_whenIdle.setSingleShot(true);
    connect(&m_whenIdle, &QTimer::timeout, this, &LongWork::goOn);
}

void LongWork::start(const Work &work)
{
    push(work.m_handle);
    m_dueSince = Clock::now();
    doSlice();
}

void LongWork::after(const QObject *receiver, const std::function<void()> &step)
{
    if (isBusy())
        m_steps.push_back({receiver, step});
    else
        step();
}

void LongWork::rightAfter(const QObject *receiver, const std::function<void()> &step)
{
    if (isBusy())
        m_steps.push_front({receiver, step});
    else
        step();
}

void LongWork::goOnIfDue()
{
    if (isBusy() && Clock::now() - m_dueSince >= longestBreak)
        goOn();
}

void LongWork::finish()
{
    if (!isGoingOn())
        return;
    const QScopedValueRollback<bool> urgent(m_isUrgent, true);
    if (m_watcher)
        m_watcher->waitForFinished();
    doSlice();
}

void LongWork::push(Work::Handle handle)
{
    handle.promise().doer = this;
    m_stack.push_back(handle);
}

void LongWork::forget(Work::Handle outermost)
{
    if (m_stack.empty() || m_stack.front() != outermost)
        return;
    m_stack.clear();
    m_watcher.reset();
    comeBack();
}

void LongWork::goOn()
{
    if (m_watcher && !m_watcher->isFinished())
        return;
    m_whenIdle.stop();
    if (isGoingOn())
        doSlice();
    else
        takeStep();
}

void LongWork::doSlice()
{
    m_watcher.reset();
    m_isPaused = false;
    const auto now = Clock::now();
    m_sliceEnd = now + std::clamp<Clock::duration>((now - m_dueSince) / 4, slice, longestSlice);
    Work::Handle current;
    while (!m_stack.empty() && !m_isPaused) {
        current = m_stack.back();
        current.resume();
        if (current.done())
            m_stack.pop_back();
    }
    if (isGoingOn()) {
        if (!m_watcher)
            comeBack();
        return;
    }
    comeBack();
    if (current.promise().thrown)
        std::rethrow_exception(current.promise().thrown);
}

/// One at a time, for each may take as long as a slice.
void LongWork::takeStep()
{
    if (m_steps.empty())
        return;
    const Step step = std::move(m_steps.front());
    m_steps.pop_front();
    if (step.receiver)
        step.call();
    comeBack();
}

/// Where anything is left to do.
void LongWork::comeBack()
{
    if (!isBusy() || m_watcher)
        return;
    m_dueSince = Clock::now();
    m_whenIdle.start(0);
}

bool LongWork::hasTime() const
{
    return m_isUrgent || Clock::now() < m_sliceEnd;
}

void LongWork::pause()
{
    m_isPaused = true;
}

bool LongWork::isAnswered(QDBusPendingCall &call) const
{
    if (m_isUrgent)
        call.waitForFinished();
    return call.isFinished();
}

void LongWork::waitFor(const QDBusPendingCall &call)
{
    m_isPaused = true;
    m_dueSince = Clock::now();
    m_watcher = std::make_unique<QDBusPendingCallWatcher>(call);
    connect(m_watcher.get(), &QDBusPendingCallWatcher::finished, this, &LongWork::goOn, Qt::QueuedConnection);
}
