// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"
#include "src/numbers/StoredNumbers.h"

/// Knows whether the dialing rules are still those under which the stored canonical numbers were made.
class DialingRuleCopies
{
public:
    DialingRuleCopies(RemoteCaller &caller, StoredNumbers &numbers)
        : m_caller(caller)
        , m_numbers(numbers)
    {
    }

    /// Compares the five settings with the copies made at the last change. When they differ, marks the stored numbers
    /// as stale, then brings all five copies up to date, and returns true: once for each change. Without the mark the
    /// copies stay, so that the next start finds the change again.
    bool dialingRulesChanged();

private:
    RemoteCaller &m_caller;
    StoredNumbers &m_numbers;
};
