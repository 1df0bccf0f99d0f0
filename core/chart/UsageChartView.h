// The balance-history chart of the dashboard card: its samples, its hover state and how it paints.
#pragma once

#include "platform/Canvas.h"
#include "platform/Formatter.h"
#include "tracking/BalancePoint.h"
#include "values/NamedColor.h"
#include "values/Point.h"
#include "values/Rect.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {

class ChartGeometry;
class ChartTexts;

// A plain value that a shell's view wraps: the shell forwards its size, the
// pointer (already in this view's flipped coordinates, origin top left) and
// paint requests, and repaints whenever needsDisplay() turns true.
class UsageChartView {
public:
    explicit UsageChartView(const Rect& frame);

    // In the card's coordinates.
    const Rect& frame() const { return m_frame; }
    // The view's own coordinates: (0, 0) and the current size.
    Rect bounds() const { return Rect{0.0, 0.0, m_boundsSize.width, m_boundsSize.height}; }
    // The platform repaints a resized view by itself, so this does not mark it.
    void setBoundsSize(Size size) { m_boundsSize = size; }

    // Neither setter marks the view for redisplay: the host does that after
    // each assignment, as the platform's views expect.
    const std::vector<BalancePoint>& points() const { return m_points; }
    void setPoints(std::vector<BalancePoint> points) { m_points = std::move(points); }
    const NamedColor& accentColor() const { return m_accentColor; }
    void setAccentColor(const NamedColor& color) { m_accentColor = color; }

    // Only the pointer sets it; it may outlive a shorter series, and drawing skips it then.
    std::optional<std::int64_t> hoveredIndex() const { return m_hoveredIndex; }
    const std::optional<std::string>& toolTip() const { return m_toolTip; }

    bool needsDisplay() const { return m_needsDisplay; }
    void setNeedsDisplay() { m_needsDisplay = true; }
    // The shell calls this once it has painted.
    void clearNeedsDisplay() { m_needsDisplay = false; }

    // Where a pointer picks sample `index` in the current bounds; what a shell
    // sends to show the marker of a given sample without a real pointer.
    std::optional<Point> pointerLocation(std::int64_t index) const;

    void mouseMoved(Point locationInView, const Formatter& formatter, const std::string& timeZoneId);
    void mouseExited();

    void draw(Canvas& canvas, const Formatter& formatter, const std::string& timeZoneId) const;

private:
    void drawHoverMarker(Canvas& canvas, const ChartGeometry& geometry, std::int64_t index,
                         const ChartTexts& texts) const;
    void clearHover();

    Rect m_frame;
    Size m_boundsSize;
    std::vector<BalancePoint> m_points;
    NamedColor m_accentColor{ColorName::SystemTeal, 1.0};
    std::optional<std::int64_t> m_hoveredIndex;
    std::optional<std::string> m_toolTip;
    bool m_needsDisplay = false;
};

} // namespace quorvane
