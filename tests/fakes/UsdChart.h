// The dashboard's chart over a USD series, for the tests that draw it or point at it.
#pragma once

#include "chart/UsageChartView.h"
#include "menu/CardFactory.h"
#include "platform/Formatter.h"
#include "values/Decimal.h"
#include "values/Timestamp.h"

#include <vector>

namespace quorvane {

// At the card's chart frame, one sample per balance `spacingSeconds` apart from `start`, its texts in
// UTC; the formatter outlives the chart.
inline UsageChartView usdChart(const Formatter& formatter, Timestamp start, double spacingSeconds,
                               const std::vector<const char*>& balances,
                               NamedColor accent = {ColorName::SystemTeal, 1.0}) {
    std::vector<BalancePoint> points;
    for (const char* balance : balances) {
        const double offset = spacingSeconds * static_cast<double>(points.size());
        points.push_back({start.plusSeconds(offset), "USD", Decimal::parse(balance).value()});
    }
    return UsageChartView(CardFactory::kChartFrame, ChartModel(std::move(points), accent, formatter, "UTC"));
}

} // namespace quorvane
