// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"
#include "bench/Options.h"
#include "bench/Progress.h"

class ServiceProcess;
class Stand;

/// The whole measurement, store size after store size. A BenchError ends it.
class Bench
{
public:
    explicit Bench(const Options &options);

    void run();
    const FigureTable &table() const { return m_table; }

private:
    void measure(int size);
    void fill(Stand &stand, int count, int size);
    void measureCreates(Stand &stand, int creates, int size);
    void measureCalls(Stand &stand, int size);
    void measureRemote(Stand &stand, int size);
    void measureSync(Stand &stand, int size);
    void measureStarts(ServiceProcess &directory, int size);
    void putMemory(const ServiceProcess &directory, int size, Figure resident, Figure anonymous, Figure proportional);
    void begin(int size, const char *task);

    const Options &m_options;
    FigureTable m_table;
    Progress m_progress;
};
