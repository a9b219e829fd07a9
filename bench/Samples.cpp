// SPDX-License-Identifier: Apache-2.0
#include "bench/Samples.h"

#include <algorithm>

double Samples::quantile(double part) const
{
    std::vector<qint64> times = m_times;
    const auto position = times.begin() + std::ptrdiff_t(part * double(times.size() - 1) + 0.5);
    std::nth_element(times.begin(), position, times.end());
    return double(*position) / 1000.0;
}
