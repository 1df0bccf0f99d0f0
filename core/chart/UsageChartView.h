// The balance-history chart of the dashboard card: its model, its pointer state and how it paints.
#pragma once

#include "chart/ChartModel.h"
#include "platform/Canvas.h"
#include "values/Point.h"
#include "values/Rect.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

class ChartGeometry;

// A plain value that a shell's view wraps: the shell forwards its size, the
// pointer (already in this view's flipped coordinates, origin top left) and
// paint requests, and repaints whenever needsDisplay() turns true.
class UsageChartView {
public:
    UsageChartView(const Rect& frame, ChartModel model);

    // In the card's coordinates.
    const Rect& frame() const { return m_frame; }
    // The view's own coordinates: (0, 0) and the current size.
    Rect bounds() const { return Rect{0.0, 0.0, m_boundsSize.width, m_boundsSize.height}; }
    // The platform repaints a resized view by itself, so this does not mark it.
    void setBoundsSize(Size size) { m_boundsSize = size; }

    const std::vector<BalancePoint>& points() const { return m_model.points(); }
    const NamedColor& accentColor() const { return m_model.accentColor(); }

    // Only the pointer sets it, and only to a sample of the series.
    std::optional<std::int64_t> hoveredIndex() const { return m_hoveredIndex; }
    const std::optional<std::string>& toolTip() const { return m_toolTip; }

    bool needsDisplay() const { return m_needsDisplay; }
    void setNeedsDisplay() { m_needsDisplay = true; }
    // The shell calls this once it has painted.
    void clearNeedsDisplay() { m_needsDisplay = false; }

    // Where a pointer picks sample `index` in the current bounds; what a shell
    // sends to show the marker of a given sample without a real pointer.
    std::optional<Point> pointerLocation(std::int64_t index) const;

    void mouseMoved(Point locationInView);
    void mouseExited();

    void draw(Canvas& canvas) const;

private:
    void drawHoverMarker(Canvas& canvas, const ChartGeometry& geometry, std::int64_t index) const;
    void clearHover();

    Rect m_frame;
    Size m_boundsSize;
    ChartModel m_model;
    std::optional<std::int64_t> m_hoveredIndex;
    std::optional<std::string> m_toolTip;
    bool m_needsDisplay = false;
};

} // namespace quorvane
