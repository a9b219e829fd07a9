// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"
#include "bench/Progress.h"

#include <random>

class BusClient;

/// Look-ups in a store of made-up contacts, in turns with an empty call. Every answer is checked, outside its time.
class LookUpRun
{
public:
    /// The store holds exactly the made-up contacts 0 to size - 1, created in this order.
    LookUpRun(const BusClient &client, int size);

    void measure(int calls, FigureTable &table, Progress &progress);

private:
    qint64 byNumber();
    qint64 byUnknownNumber();
    qint64 byId();
    qint64 page(int start) const;
    int anyContact();

    const BusClient &m_client;
    int m_size;
    std::mt19937 m_random; // seeded alike, so every run asks the same
};
