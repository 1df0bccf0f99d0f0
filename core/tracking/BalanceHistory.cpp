#include "tracking/BalanceHistory.h"

#include "balance/ParseAmount.h"
#include "tracking/HistoryCodec.h"

#include <algorithm>
#include <iterator>

namespace quorvane {

BalanceHistory::BalanceHistory(Defaults& defaults, const Clock& clock)
    : m_defaults(defaults)
    , m_clock(clock) {}

std::vector<BalancePoint> BalanceHistory::allHistory() const {
    const auto bytes = m_defaults.dataValue(std::string(kHistoryKey));
    if (!bytes) {
        return {};
    }
    return HistoryCodec::decode(*bytes).value_or(std::vector<BalancePoint>{});
}

void BalanceHistory::recordHistory(const BalanceResponse& response) {
    std::vector<BalancePoint> points = allHistory();
    const Timestamp now = m_clock.now();
    for (const BalanceInfo& info : response.balanceInfos) {
        points.push_back(BalancePoint{now, info.currency, parseAmount(info.totalBalance)});
    }

    const Timestamp cutoff = now.plusSeconds(-kMaxAgeSeconds);
    std::erase_if(points, [cutoff](const BalancePoint& point) { return point.timestamp < cutoff; });
    if (points.size() > kMaxSamples) {
        points.erase(points.begin(), points.end() - static_cast<std::ptrdiff_t>(kMaxSamples));
    }
    m_defaults.setData(std::string(kHistoryKey), HistoryCodec::encode(points));
}

std::vector<BalancePoint> BalanceHistory::history(const std::string& currency) const {
    std::vector<BalancePoint> series;
    std::vector<BalancePoint> points = allHistory();
    std::copy_if(std::make_move_iterator(points.begin()), std::make_move_iterator(points.end()),
                 std::back_inserter(series),
                 [&currency](const BalancePoint& p) { return p.currency == currency; });
    if (series.size() > kSeriesLength) {
        series.erase(series.begin(), series.end() - static_cast<std::ptrdiff_t>(kSeriesLength));
    }
    return series;
}

void BalanceHistory::clear() {
    m_defaults.remove(std::string(kHistoryKey));
}

} // namespace quorvane
