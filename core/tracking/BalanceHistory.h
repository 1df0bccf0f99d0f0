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

// Stored as one JSON value, and the store is the only truth: every read
// fetches the stored bytes. What they decode to is kept beside the bytes it
// came from, so a refresh (record, then the chart's read) decodes at most
// once, and only when another process changed the value since.
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
    // The points stored now: the kept decoding when the bytes are the same.
    const std::vector<BalancePoint>& stored() const;
    void keep(std::string bytes, std::vector<BalancePoint> points) const;

    Defaults& m_defaults;
    const Clock& m_clock;
    mutable std::string m_keptBytes;
    mutable std::vector<BalancePoint> m_keptPoints;
};

} // namespace quorvane
