// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"
#include "bench/Progress.h"
#include "bench/ServiceProcess.h"

class Stand;

/// Searches by name in a made-up company directory, an LDIF file that kestin-wsmanager serves. Nobody in the store has
/// a name that stands in it.
class RemoteRun
{
public:
    /// Whether kestin-wsmanager is there.
    static bool isPossible();

    /// Writes the file and starts kestin-wsmanager, which ends with the object. A directory that is started from then
    /// on searches there too.
    explicit RemoteRun(const Stand &stand);

    /// `size` is the number of contacts in the store.
    void measure(int searches, int size, FigureTable &table, Progress &progress);
    /// How long a packet takes from the event that brings it to the event that tells its results.
    void measurePackets(int searches, int size, FigureTable &table);

private:
    const Stand &m_stand;
    ServiceProcess m_wsmanager;
};
