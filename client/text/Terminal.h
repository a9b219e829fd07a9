// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Terminal {

/// Columns of the terminal that the standard output goes to; 0 when it goes to a file or a pipe. The environment
/// variable COLUMNS, where it is exported, decides instead.
int outputWidth();

struct Size
{
    int columns = 0;
    int rows = 0;
};

/// The terminal that the standard output goes to; all 0 when it goes to a file or a pipe.
Size outputSize();

/// Whether a person sees the standard error as it is written.
bool errorIsTerminal();

} // namespace Terminal
