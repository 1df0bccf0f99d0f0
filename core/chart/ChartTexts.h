// The usage chart's words: the tooltip of a hovered sample, the value bubble's line and its amounts.
#pragma once

#include "platform/Formatter.h"
#include "tracking/BalancePoint.h"
#include "values/Decimal.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// Dates and amounts follow the formatter's locale and the given time zone;
// the chart's amounts are plain decimals without a currency symbol.
class ChartTexts {
public:
    ChartTexts(const Formatter& formatter, std::string timeZoneId);

    // The balance with its currency, the date and time, and (after the first
    // sample) the change from the sample before, one per line. Nothing for a
    // missing index or one outside the series.
    std::optional<std::string> tooltipText(const std::vector<BalancePoint>& points,
                                           std::optional<std::int64_t> index) const;
    // The bubble's short line: the time alone and the balance.
    std::string compactTooltipText(const BalancePoint& point) const;
    // At most 4 fraction digits in the locale's style; the plain decimal text
    // when the locale yields none.
    std::string formatDecimal(const Decimal& amount) const;

private:
    std::string changeLine(const Decimal& previous, const Decimal& current) const;

    // A pointer, not a reference, so the chart's model stays assignable.
    const Formatter* m_formatter;
    std::string m_timeZoneId;
};

} // namespace quorvane
