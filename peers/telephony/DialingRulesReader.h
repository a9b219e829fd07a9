// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/telephony/DialingRules.h"

#include <QDeadlineTimer>
#include <QString>

class RemoteCaller;

/// The dialing rules as the settings manager has them. They are read when they are first asked for and then kept, until
/// they are forgotten. While the settings manager does not answer the rules last read hold (at first: none), and it is
/// asked again every 10 s at most, for whoever wants numbers waits. Main thread only.
class DialingRulesReader
{
public:
    /// `caller` must outlive this object.
    explicit DialingRulesReader(RemoteCaller &caller);

    const DialingRules &rules();
    /// They may have changed: the next use reads them again.
    void forget()
    {
        m_isRead = false;
        m_pause.setRemainingTime(0);
    }

private:
    bool read(DialingRules &rules);
    void noteFailure(const QString &reason);

    RemoteCaller &m_caller;
    DialingRules m_rules;
    bool m_isRead = false;
    QDeadlineTimer m_pause; ///< over, unless they could not be read just now
    bool m_failureIsKnown = false;
};
