// SPDX-License-Identifier: Apache-2.0
#include "src/search/RemoteSearchByPhoneNumberThread.h"

const RemoteSearchThread::Texts &RemoteSearchByPhoneNumberThread::texts() const
{
    static constexpr Texts texts{
        "[RemoteSearchByPhoneNumberThread] start search Id: %1",
        "[RemoteSearchByPhoneThread] Security: stopping search unstarted",
        "[RemoteSearchByPhoneThread] Security: stopping search %1 w/o results",
        "[RemoteSearchByPhoneThread]search %1 getting a packet of [%2] contacts from WS",
        "[RemoteSearchByPhoneThread] UDA GetNextResults returns TIMEOUT. I'm stopping.",
        "[RemoteSearchByPhoneThread] UDA GetNextResults returns FINISH. I'm stopping search %1 ",
        "[RemoteSearchByPhoneThread] UDA GetNextResults returns %1. I ask more results for search %2",
        "[RemoteSearchByPhoneThread] ending search %1",
    };
    return texts;
}
