// Where the usage chart puts things: plot rectangle, balance scale, sample positions, hover pick and bubble.
#pragma once

#include "tracking/BalancePoint.h"
#include "values/Decimal.h"
#include "values/Path.h"
#include "values/Point.h"
#include "values/Rect.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace quorvane {

// Computed afresh from the view's bounds and its samples on every pass and
// every pointer event; nothing here outlives the call that made it.
class ChartGeometry {
public:
    static constexpr double kPlotInset = 12.0;
    static constexpr double kBubbleHeight = 22.0;

    ChartGeometry(const Rect& bounds, const std::vector<BalancePoint>& points);

    const Rect& bounds() const { return m_bounds; }
    const Rect& plotRect() const { return m_plotRect; }
    // A line needs two samples; with fewer the chart shows its placeholder.
    bool hasSeries() const { return m_balances.size() >= 2; }

    // The lowest balance (0 without samples) lies on the plot's bottom edge.
    const Decimal& minBalance() const { return m_minBalance; }
    // Highest minus lowest, never below 0.000001 so that a flat series still divides.
    const Decimal& range() const { return m_range; }

    // Samples are spread evenly by index, not by time. Nothing without a series
    // or for an index outside it.
    std::optional<Point> samplePosition(std::int64_t index) const;
    // Where a pointer has to be to pick the sample: its position, pulled just
    // inside the right and bottom edges, which the plot rectangle excludes.
    std::optional<Point> pointerLocation(std::int64_t index) const;

    // The samples joined in order; empty without a series.
    Path linePath() const;
    // The line closed along the plot's bottom edge, so the fill sits under it.
    Path fillOutline(const Path& line) const;

    bool plotContains(Point location) const { return m_plotRect.contains(location); }
    // The sample closest to x horizontally; exactly halfway, the later one wins.
    // Needs at least one sample.
    std::int64_t nearestIndex(double x) const;

    // The value bubble at the top of the view for a sample at sampleX whose
    // text measures textWidth, kept 8 pt away from the view's sides.
    Rect bubbleRect(double sampleX, double textWidth) const;
    static Rect bubbleTextRect(const Rect& bubble);

private:
    Rect m_bounds;
    Rect m_plotRect;
    std::vector<Decimal> m_balances;
    Decimal m_minBalance;
    Decimal m_range;
};

} // namespace quorvane
