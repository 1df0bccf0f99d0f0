#include "tracking/BalanceHistory.h"

#include "balance/ParseAmount.h"
#include "tracking/HistoryCodec.h"

#include <algorithm>
#include <iterator>

namespace quorvane {

BalanceHistory::BalanceHistory(Defaults& defaults, const Clock& clock)
    : m_defaults(defaults)
    , m_clock(clock) {}

const std::vector<BalancePoint>& BalanceHistory::stored() const {
    std::optional<std::string> bytes = m_defaults.dataValue(std::string(kHistoryKey));
    if (!bytes) {
        bytes.emplace();
    }
    // Nothing kept yet stands for an absent or empty value, which decode to nothing.
    if (*bytes != m_keptBytes) {
        std::vector<BalancePoint> points = HistoryCodec::decode(*bytes).value_or(std::vector<BalancePoint>{});
        keep(std::move(*bytes), std::move(points));
    }
    return m_keptPoints;
}

void BalanceHistory::keep(std::string bytes, std::vector<BalancePoint> points) const {
    m_keptBytes = std::move(bytes);
    m_keptPoints = std::move(points);
}

std::vector<BalancePoint> BalanceHistory::allHistory() const {
    return stored();
}

void BalanceHistory::recordHistory(const BalanceResponse& response) {
    std::vector<BalancePoint> points = stored();
    const Timestamp now = m_clock.now();
    for (const BalanceInfo& info : response.balanceInfos) {
        points.push_back(BalancePoint{now, info.currency, parseAmount(info.totalBalance)});
    }

    const Timestamp cutoff = now.plusSeconds(-kMaxAgeSeconds);
    std::erase_if(points, [cutoff](const BalancePoint& point) { return point.timestamp < cutoff; });
    if (points.size() > kMaxSamples) {
        points.erase(points.begin(), points.end() - static_cast<std::ptrdiff_t>(kMaxSamples));
    }
    std::string bytes = HistoryCodec::encode(points);
    m_defaults.setData(std::string(kHistoryKey), bytes);
    keep(std::move(bytes), std::move(points));
}

std::vector<BalancePoint> BalanceHistory::history(const std::string& currency) const {
    std::vector<BalancePoint> series;
    const std::vector<BalancePoint>& points = stored();
    std::copy_if(points.begin(), points.end(), std::back_inserter(series),
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
