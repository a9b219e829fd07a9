// SPDX-License-Identifier: Apache-2.0
#pragma once

#ifndef Q_MOC_RUN // which cannot read it
#include <coroutine>
#endif
#include <exception>
#include <utility>

class LongWork;

/// Long work as one function, from its first step to its last: a coroutine, which LongWork brings forward a slice at a
/// time. It may await other work, which is then done first; what that throws arrives at the await. Destroying the
/// object breaks the work off: what the function holds is released as if it had been left.
class [[nodiscard]] Work
{
public:
    struct promise_type // the name that the language asks for
    {
        LongWork *doer = nullptr; ///< once begun
        std::exception_ptr thrown;

        Work get_return_object() { return Work(Handle::from_promise(*this)); }
        std::suspend_always initial_suspend() const noexcept { return {}; }
        std::suspend_always final_suspend() const noexcept { return {}; }
        void return_void() const {}
        void unhandled_exception() { thrown = std::current_exception(); }
    };
    using Handle = std::coroutine_handle<promise_type>;

    Work(Work &&other) noexcept
        : m_handle(std::exchange(other.m_handle, {}))
    {
    }
    ~Work();
    Work(const Work &) = delete;
    Work &operator=(const Work &) = delete;
    Work &operator=(Work &&) = delete;

    bool await_ready() const noexcept { return false; }
    void await_suspend(Handle outer) const;
    void await_resume() const;

private:
    friend class LongWork;

    explicit Work(Handle handle)
        : m_handle(handle)
    {
    }

    Handle m_handle;
};
