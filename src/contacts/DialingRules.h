// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"

/// Knows whether the dialing rules are still those under which the stored canonical numbers were made.
class DialingRules
{
public:
    explicit DialingRules(RemoteCaller &caller)
        : m_caller(caller)
    {
    }

    /// Compares the five settings with the copies made at the last change. When they differ, brings all five copies up
    /// to date and returns true: once for each change.
    bool dialingRulesChanged();

private:
    RemoteCaller &m_caller;
};
