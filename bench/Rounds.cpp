// SPDX-License-Identifier: Apache-2.0
#include "bench/Rounds.h"

#include <algorithm>

double Samples::quantile(double part) const
{
    std::vector<qint64> times = m_times;
    const auto position = times.begin() + std::ptrdiff_t(part * double(times.size() - 1) + 0.5);
    std::nth_element(times.begin(), position, times.end());
    return double(*position) / 1000.0;
}

std::size_t Rounds::add(Call call)
{
    m_kinds.push_back({std::move(call), {}});
    return m_kinds.size() - 1;
}

void Rounds::run(int warmUp, int count, int perRound, Progress &progress)
{
    for (Kind &kind : m_kinds) {
        while (kind.made < warmUp)
            kind.call(kind.made++);
    }
    for (int done = 0; done < count; done += perRound) {
        const int end = warmUp + std::min(count, done + perRound);
        for (Kind &kind : m_kinds) {
            while (kind.made < end)
                kind.samples.add(kind.call(kind.made++));
        }
        progress.show(end - warmUp, count);
    }
}
