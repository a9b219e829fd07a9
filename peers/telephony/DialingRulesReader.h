// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/telephony/DialingRules.h"

#include <QString>

class RemoteCaller;

/// The dialing rules as the settings manager has them. They are read when they are first asked for and then kept, until
/// they are forgotten. While the settings manager is not there the rules last read hold (at first: none), and every use
/// asks again: without a peer the answer comes at once, and a silent one is spared by the transport. Main thread only.
class DialingRulesReader
{
public:
    /// `caller` must outlive this object.
    explicit DialingRulesReader(RemoteCaller &caller);

    const DialingRules &rules();
    /// They may have changed: the next use reads them again.
    void forget() { m_isRead = false; }

private:
    bool read(DialingRules &rules);
    void noteFailure(const QString &reason);

    RemoteCaller &m_caller;
    DialingRules m_rules;
    bool m_isRead = false;
    bool m_failureIsKnown = false;
};
