// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

/// What a process has in memory, in MB (a million bytes). 0 where the kernel does not tell.
struct ProcessMemory
{
    static ProcessMemory of(qint64 processId);

    double resident = 0;     ///< all its pages that are in memory, shared libraries among them
    double anonymous = 0;    ///< of these its own, backed by no file
    double proportional = 0; ///< a page that n processes share counted as an n-th
    double peak = 0;         ///< the most that `resident` has been
};
