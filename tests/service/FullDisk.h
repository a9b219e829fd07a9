// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/Program.h"

#include <QTemporaryFile>

#include <limits>

/// A disk below a folder that is as full as a test says, for the program that is started with it. It needs no rights: a
/// library that is loaded before all others (full_disk_shim.cpp) makes the writes fail.
class FullDisk
{
public:
    /// To be made before the program is started. There is room at first.
    FullDisk(Program &program, const QString &folder);

    /// From now on files there can grow by so many bytes together.
    void leave(qint64 bytes);
    void empty() { leave(std::numeric_limits<qint64>::max()); }

private:
    QTemporaryFile m_left;
};
