// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/OwnedDescriptor.h"

#include <atomic>

/// Ends another thread's wait for a descriptor. Any thread.
class Wakeup
{
public:
    Wakeup();

    /// From now on every wait ends at once.
    void wake();
    bool isAwake() const { return m_isAwake; }

    enum class Event { Readable, Woken, TimeOut };
    /// Waits until the descriptor can be read, but `milliseconds` at most (-1: no limit).
    Event waitFor(int descriptor, int milliseconds) const;

private:
    OwnedDescriptor m_event;
    std::atomic<bool> m_isAwake;
};
