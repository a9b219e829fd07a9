// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/Progress.h"

#include <QtGlobal>

#include <functional>
#include <vector>

/// The times that calls of a kind took. The answers are in microseconds. At least a single time must have been added.
class Samples
{
public:
    void add(qint64 nanoseconds) { m_times.push_back(nanoseconds); }

    double median() const { return quantile(0.5); }
    double percentile99() const { return quantile(0.99); }
    double slowest() const { return quantile(1); }

private:
    double quantile(double part) const;

    std::vector<qint64> m_times;
};

/// Kinds of calls to be compared, made in turns: some of each, and again. So whatever else the machine does in the
/// meantime, and whatever warms up or slows down, falls on all of them alike.
class Rounds
{
public:
    /// Makes the call with this number, counted from 0, and tells how many nanoseconds it took.
    using Call = std::function<qint64(int)>;

    /// The number under which its times are found afterwards.
    std::size_t add(Call call);
    /// `warmUp` calls of each kind that do not count, then `count` of each, `perRound` at a time.
    void run(int warmUp, int count, int perRound, Progress &progress);

    const Samples &samples(std::size_t kind) const { return m_kinds.at(kind).samples; }

private:
    struct Kind
    {
        Call call;
        Samples samples;
        int made = 0;
    };

    std::vector<Kind> m_kinds;
};
