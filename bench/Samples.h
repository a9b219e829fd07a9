// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <vector>

/// The times that one kind of call took. The answers are in microseconds; at least one time must have been added.
class Samples
{
public:
    void add(qint64 nanoseconds) { m_times.push_back(nanoseconds); }

    double median() const { return quantile(0.5); }
    double percentile99() const { return quantile(0.99); }

private:
    double quantile(double part) const;

    std::vector<qint64> m_times;
};
