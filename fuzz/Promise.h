// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program when it is broken, so that the fuzzer keeps the input.
inline void promise(bool isKept, const char *what)
{
    if (isKept)
        return;
    std::fprintf(stderr, "Broken: %s\n", what);
    std::abort();
}
