// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"

class Stand;

/// The resizing of photos: of a large photo, and of many photos at a start.
class PhotoRun
{
public:
    PhotoRun(Stand &stand, int size);

    void measure(FigureTable &table);

private:
    void measureLargePhoto(FigureTable &table) const;
    void measureStarts(FigureTable &table) const;

    Stand &m_stand;
    int m_size;
};
