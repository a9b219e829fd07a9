// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"

class Stand;

/// What the service sends to the disk for a single write and for a start, as the kernel counts it.
class FlashRun
{
public:
    /// At least a hundred contacts are stored, which are so many afterwards.
    FlashRun(Stand &stand, int size);

    void measure(FigureTable &table) const;

private:
    Stand &m_stand;
    int m_size;
};
