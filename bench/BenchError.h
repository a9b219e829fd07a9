// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <stdexcept>

/// Why nothing can be measured, or why what was measured would not count (an answer that is wrong).
class BenchError : public std::runtime_error
{
public:
    explicit BenchError(const QString &reason)
        : std::runtime_error(reason.toStdString())
    {
    }
};
