#include "chart/ChartGeometry.h"

#include <algorithm>
#include <cmath>

namespace quorvane {

namespace {

constexpr double kBubbleTextPadding = 14.0;
constexpr double kBubbleMinWidth = 92.0;
// Narrower than the view by a little more than both side margins.
constexpr double kBubbleMaxWidthInset = 18.0;
constexpr double kBubbleSideMargin = 8.0;
constexpr double kBubbleTop = 6.0;
constexpr double kBubbleInsetX = 7.0;
constexpr double kBubbleInsetY = 4.0;

} // namespace

ChartGeometry::ChartGeometry(const Rect& bounds, const std::vector<BalancePoint>& points)
    : m_bounds(bounds)
    , m_plotRect(bounds.insetBy(kPlotInset, kPlotInset)) {
    m_balances.reserve(points.size());
    for (const BalancePoint& point : points) {
        m_balances.push_back(point.balance);
    }
    // The floor keeps the division defined for a flat series and puts every
    // sample of one on the bottom edge; it is compared and applied in decimal.
    const Decimal floor = Decimal::parse("0.000001").value();
    m_range = floor;
    if (!m_balances.empty()) {
        const auto [lowest, highest] = std::minmax_element(m_balances.begin(), m_balances.end());
        m_minBalance = *lowest;
        m_range = std::max(*highest - *lowest, floor);
    }
}

std::optional<Point> ChartGeometry::samplePosition(std::int64_t index) const {
    const auto count = static_cast<std::int64_t>(m_balances.size());
    if (!hasSeries() || index < 0 || index >= count) {
        return std::nullopt;
    }
    const double fraction = static_cast<double>(index) / static_cast<double>(count - 1);
    const double x = m_plotRect.minX() + m_plotRect.width * fraction;
    // Only the final ratio leaves decimal, so balances that differ in their
    // last digits still land where they should.
    const Decimal offset = m_balances[static_cast<std::size_t>(index)] - m_minBalance;
    const double ratio = offset.dividedBy(m_range).value_or(Decimal{}).toDouble();
    const double y = m_plotRect.maxY() - ratio * m_plotRect.height;
    return Point{x, y};
}

std::optional<Point> ChartGeometry::pointerLocation(std::int64_t index) const {
    std::optional<Point> position = samplePosition(index);
    if (position) {
        position->x = std::min(position->x, std::nextafter(m_plotRect.maxX(), m_plotRect.minX()));
        position->y = std::min(position->y, std::nextafter(m_plotRect.maxY(), m_plotRect.minY()));
    }
    return position;
}

Path ChartGeometry::linePath() const {
    Path line;
    const auto count = static_cast<std::int64_t>(m_balances.size());
    for (std::int64_t index = 0; index < count; ++index) {
        const std::optional<Point> position = samplePosition(index);
        if (!position) {
            break;
        }
        if (index == 0) {
            line.moveTo(*position);
        } else {
            line.lineTo(*position);
        }
    }
    return line;
}

Path ChartGeometry::fillOutline(const Path& line) const {
    Path outline = line;
    outline.lineTo(Point{m_plotRect.maxX(), m_plotRect.maxY()});
    outline.lineTo(Point{m_plotRect.minX(), m_plotRect.maxY()});
    outline.close();
    return outline;
}

std::int64_t ChartGeometry::nearestIndex(double x) const {
    const auto count = static_cast<std::int64_t>(m_balances.size());
    if (count < 2) {
        return 0;
    }
    double ratio = (x - m_plotRect.minX()) / m_plotRect.width;
    // Written so that a NaN from an empty plot falls to the first sample.
    if (!(ratio > 0.0)) {
        ratio = 0.0;
    } else if (ratio > 1.0) {
        ratio = 1.0;
    }
    // std::round takes halves away from zero, so a pointer exactly between two
    // samples picks the right-hand one.
    const double nearest = std::round(ratio * static_cast<double>(count - 1));
    return std::clamp(static_cast<std::int64_t>(nearest), std::int64_t{0}, count - 1);
}

Rect ChartGeometry::bubbleRect(double sampleX, double textWidth) const {
    double width = std::max(textWidth + kBubbleTextPadding, kBubbleMinWidth);
    width = std::min(width, m_bounds.width - kBubbleMaxWidthInset);
    double x = std::max(sampleX - width / 2.0, m_bounds.minX() + kBubbleSideMargin);
    x = std::min(x, m_bounds.maxX() - width - kBubbleSideMargin);
    return Rect{x, m_bounds.minY() + kBubbleTop, width, kBubbleHeight};
}

Rect ChartGeometry::bubbleTextRect(const Rect& bubble) {
    return bubble.insetBy(kBubbleInsetX, kBubbleInsetY);
}

} // namespace quorvane
