// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the program ends with; listed in its help, and a promise to scripts.
enum class ExitCode {
    Done = 0,
    Refused = 1,   ///< the directory, or the settings manager, said no; nobody found
    Usage = 2,     ///< the command line makes no sense
    NoService = 3, ///< the bus or the service cannot be reached
    FileError = 4, ///< a file cannot be read, or the output cannot be written
    NoAnswer = 5,  ///< a service said nothing within the limit
};
