// SPDX-License-Identifier: Apache-2.0
#include "src/search/RemoteSearchByNameThread.h"

const RemoteSearchThread::Texts &RemoteSearchByNameThread::texts() const
{
    static constexpr Texts texts{
        "[RemoteSearchByNameThread] start search Id: %1",
        "[RemoteSearchByNameThread] Security: stopping search unstarted",
        "[RemoteSearchByNameThread] Security: stopping search %1 w/o results",
        "[RemoteSearchByNameThread]search %1 getting a packet of [%2] contacts from WS",
        "[RemoteSearchByNameThread] UDA GetNextResults returns TIMEOUT. I'm stopping.",
        "[RemoteSearchByNameThread] UDA GetNextResults returns FINISH. I'm stopping search %1 ",
        "[RemoteSearchByNameThread] UDA GetNextResults returns %1. I ask more results for search %2",
        "[RemoteSearchByNameThread] ending search %1",
    };
    return texts;
}
