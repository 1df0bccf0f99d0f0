#include "chart/ChartTexts.h"

#include <utility>

namespace quorvane {

ChartTexts::ChartTexts(const Formatter& formatter, std::string timeZoneId)
    : m_formatter(&formatter)
    , m_timeZoneId(std::move(timeZoneId)) {}

std::optional<std::string> ChartTexts::tooltipText(const std::vector<BalancePoint>& points,
                                                   std::optional<std::int64_t> index) const {
    if (!index || *index < 0 || *index >= static_cast<std::int64_t>(points.size())) {
        return std::nullopt;
    }
    const auto position = static_cast<std::size_t>(*index);
    const BalancePoint& point = points[position];
    std::string text = point.currency + " balance: " + formatDecimal(point.balance);
    // Separate appends, not a literal prepended to a temporary, which g++ 12 at
    // -O3 misreads as an overlapping copy (-Wrestrict).
    text += "\nTime: ";
    text += m_formatter->dateTime(point.timestamp, DateStyle::Short, TimeStyle::Medium, m_timeZoneId);
    if (position > 0) {
        text += '\n';
        text += changeLine(points[position - 1].balance, point.balance);
    }
    return text;
}

std::string ChartTexts::compactTooltipText(const BalancePoint& point) const {
    return m_formatter->dateTime(point.timestamp, DateStyle::None, TimeStyle::Short, m_timeZoneId) + "  " +
           formatDecimal(point.balance);
}

std::string ChartTexts::formatDecimal(const Decimal& amount) const {
    return m_formatter->decimal(amount, 4).value_or(amount.toString());
}

std::string ChartTexts::changeLine(const Decimal& previous, const Decimal& current) const {
    // Spending is what lowers a balance, so a fall reads as use; a rise can
    // only be a top-up.
    const Decimal delta = previous - current;
    if (delta.isZero()) {
        return "No change since previous";
    }
    if (delta.isNegative()) {
        return "Balance increased: " + formatDecimal(delta.magnitude());
    }
    return "Used since previous: " + formatDecimal(delta);
}

} // namespace quorvane
