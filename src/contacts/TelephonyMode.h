// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"

/// Asks the telephony service in which mode the phone runs.
class TelephonyMode
{
public:
    explicit TelephonyMode(RemoteCaller &caller)
        : m_caller(caller)
    {
    }

    /// Whether the mode allows a remote directory: it is known and not the basic mode.
    bool getKestinMode();

private:
    RemoteCaller &m_caller;
};
