// Balance samples shaped like a running app's history, for the benchmarks to store and draw.
#pragma once

#include "tracking/BalancePoint.h"
#include "values/Timestamp.h"

#include <cstddef>
#include <vector>

namespace quorvane {

// Balances fall by a few cents per sample with cent-precise amounts, as real
// spending does, so that every sample has its own text and chart height.
class SampleSeries {
public:
    // `count` samples, oldest first, one every `spacingSeconds`, the newest at `newest`,
    // alternating "CNY" and "USD" in pairs taken at the same moment, as refreshes record them.
    static std::vector<BalancePoint> twoCurrencies(std::size_t count, Timestamp newest,
                                                   double spacingSeconds);
    // `count` "USD" samples, oldest first, one every `spacingSeconds`, the newest at `newest`.
    static std::vector<BalancePoint> usd(std::size_t count, Timestamp newest, double spacingSeconds);
};

} // namespace quorvane
