// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"
#include "bench/Progress.h"
#include "bench/SearchClient.h"

class Stand;

/// Searches by name in a store of made-up contacts, in turns with what they cannot do without: an empty call and the
/// query in bare SQLite. Every answer is checked, outside its time.
class SearchRun
{
public:
    /// The store holds exactly the made-up contacts 0 to size - 1, with their latin names.
    SearchRun(Stand &stand, int size);

    void measure(int searches, FigureTable &table, Progress &progress);

private:
    void measureSearches(int searches, FigureTable &table, Progress &progress);
    void measureEverybody(int searches, FigureTable &table, Progress &progress);
    void measureMemory(FigureTable &table);
    void measurePages(int calls, FigureTable &table, Progress &progress);
    qint64 page(int start) const;

    Stand &m_stand;
    int m_size;
    SearchClient m_searcher;
};
