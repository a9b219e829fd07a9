// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/PlatformCalls.h"

/// The calls that a running search makes into the company directory. Sent without waiting; the answers are events.
class SearchCalls
{
public:
    explicit SearchCalls(RemoteCaller &caller)
        : m_calls(caller)
    {
    }

    void searchByFullName(const QString &searchId, const QString &name);
    void searchByPhoneNumber(const QString &searchId, const QString &phoneNumber);
    void getNextResults(const QString &searchId);
    void stopSearch(const QString &searchId);

private:
    PlatformCalls m_calls;
};
