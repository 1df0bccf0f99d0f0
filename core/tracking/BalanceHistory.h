// The persisted balance samples behind the chart, bounded to seven days and 400 samples.
#pragma once

#include "balance/BalanceResponse.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "tracking/BalancePoint.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// Stored as one JSON value and decoded anew on every read: the bounds keep it
// small, and holding no copy means the store is the only truth.
class BalanceHistory {
public:
    static constexpr std::string_view kHistoryKey = "balanceHistory";
    static constexpr double kMaxAgeSeconds = 604800.0;
    static constexpr std::size_t kMaxSamples = 400;
    static constexpr std::size_t kSeriesLength = 48;

    BalanceHistory(Defaults& defaults, const Clock& clock);

    // Oldest first; empty when nothing is stored or the stored value does not decode.
    std::vector<BalancePoint> allHistory() const;
    // One sample per listed currency, all at the same moment, then pruned by age and count.
    void recordHistory(const BalanceResponse& response);
    // The newest samples of one currency (exact code), oldest first.
    std::vector<BalancePoint> history(const std::string& currency) const;
    void clear();

private:
    Defaults& m_defaults;
    const Clock& m_clock;
};

} // namespace quorvane
