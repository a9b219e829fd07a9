// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/Work.h"

#include <QDBusPendingCall>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

class QDBusPendingCallWatcher;

/// Does long work on the event loop, a few milliseconds at a time, so that what arrives meanwhile is served between.
/// One piece of work at a time; what must not come between waits for its end, in the order in which it came.
class LongWork : public QObject
{
public:
    /// How long a slice lasts, from which work goes on to its next `turn`. It becomes longer, up to the longest, where
    /// others have left the work less than a fifth of the time.
    static constexpr std::chrono::microseconds slice{2000};
    static constexpr std::chrono::microseconds longestSlice{10000};

    LongWork();

    /// Begins with the first slice, and with that may be over. Nothing else may be going on. The work must stay where
    /// it is until it is over or destroyed. What it throws leaves here or the event loop.
    void start(const Work &work);
    bool isGoingOn() const { return !m_stack.empty(); }

    /// Calls the step at once when nothing is going on or waits, else behind all that. Steps wait as long as their
    /// receiver lives.
    void after(const QObject *receiver, const std::function<void()> &step);
    /// Before all that waits.
    void rightAfter(const QObject *receiver, const std::function<void()> &step);
    bool isBusy() const { return isGoingOn() || !m_steps.empty(); }

    /// Does a slice where that is overdue. For those who serve calls: as long as more come the loop is not idle.
    void goOnIfDue();

    /// Does the rest without a pause. What waits for its end still waits.
    void finish();

    /// To be awaited by work, often: lets the event loop have a turn when the slice has lasted.
    struct Turn
    {
        LongWork &doer;

        bool await_ready() const { return doer.hasTime(); }
        void await_suspend(std::coroutine_handle<>) const { doer.pause(); }
        void await_resume() const {}
    };
    Turn turn() { return {*this}; }

    /// To be awaited by work: until the call is answered, or has failed.
    struct Answer
    {
        LongWork &doer;
        QDBusPendingCall call;

        bool await_ready() { return doer.isAnswered(call); }
        void await_suspend(std::coroutine_handle<>) const { doer.waitFor(call); }
        void await_resume() const {}
    };
    Answer answerTo(const QDBusPendingCall &call) { return {*this, call}; }

private:
    friend class Work;

    struct Step
    {
        QPointer<const QObject> receiver;
        std::function<void()> call;
    };

    void push(Work::Handle handle);
    void forget(Work::Handle outermost);
    void goOn();
    void doSlice();
    void takeStep();
    void comeBack();
    bool hasTime() const;
    void pause();
    bool isAnswered(QDBusPendingCall &call) const;
    void waitFor(const QDBusPendingCall &call);

    std::vector<Work::Handle> m_stack; ///< each awaits the next
    std::deque<Step> m_steps;
    std::unique_ptr<QDBusPendingCallWatcher> m_watcher; ///< while an answer is waited for
    std::chrono::steady_clock::time_point m_sliceEnd;
    std::chrono::steady_clock::time_point m_dueSince; ///< when there is something left to do
    bool m_isPaused = false;
    bool m_isUrgent = false;
    QTimer m_whenIdle;
};
