#include "chart/UsageChartView.h"

#include "chart/ChartGeometry.h"
#include "values/Font.h"
#include "values/Path.h"

#include <utility>

namespace quorvane {

namespace {

constexpr NamedColor kBackgroundColor{ColorName::ControlBackground, 0.55};
constexpr double kBackgroundRadius = 10.0;

constexpr const char* kPlaceholderText = "Usage graph appears after a few refreshes";
constexpr Font kPlaceholderFont{11.0, FontWeight::Medium};
constexpr NamedColor kPlaceholderColor{ColorName::SecondaryLabel, 1.0};
// Moves the message off the plot's corner towards the middle of the card.
constexpr double kPlaceholderOffsetX = 4.0;
constexpr double kPlaceholderOffsetY = 9.0;

constexpr double kFillAlpha = 0.18;
constexpr double kLineWidth = 2.5;

constexpr NamedColor kGuideColor{ColorName::Separator, 0.55};
constexpr double kGuideWidth = 1.0;
constexpr double kDotRadius = 4.0;
constexpr NamedColor kBubbleColor{ColorName::WindowBackground, 0.92};
constexpr double kBubbleRadius = 7.0;
constexpr Font kBubbleFont{10.0, FontWeight::Semibold};
constexpr NamedColor kBubbleTextColor{ColorName::Label, 1.0};

} // namespace

UsageChartView::UsageChartView(const Rect& frame, ChartModel model)
    : m_frame(frame)
    , m_boundsSize{frame.width, frame.height}
    , m_model(std::move(model)) {}

std::optional<Point> UsageChartView::pointerLocation(std::int64_t index) const {
    return ChartGeometry(bounds(), m_model.points()).pointerLocation(index);
}

void UsageChartView::mouseMoved(Point locationInView) {
    const ChartGeometry geometry(bounds(), m_model.points());
    if (!geometry.hasSeries()) {
        return;
    }
    if (!geometry.plotContains(locationInView)) {
        clearHover();
        return;
    }
    // Deliberately marked on every move, not only when the index changes, so the
    // bubble's time and amount are formatted afresh as the pointer moves.
    m_hoveredIndex = geometry.nearestIndex(locationInView.x);
    m_needsDisplay = true;
    m_toolTip = m_model.toolTip(m_hoveredIndex);
}

void UsageChartView::mouseExited() {
    clearHover();
}

void UsageChartView::clearHover() {
    m_hoveredIndex.reset();
    m_needsDisplay = true;
    m_toolTip.reset();
}

void UsageChartView::draw(Canvas& canvas) const {
    const ChartGeometry geometry(bounds(), m_model.points());
    canvas.setFillColor(kBackgroundColor);
    canvas.fill(Path::roundedRect(geometry.bounds(), kBackgroundRadius, kBackgroundRadius));

    if (!geometry.hasSeries()) {
        canvas.drawText(kPlaceholderText,
                        geometry.plotRect().offsetBy(kPlaceholderOffsetX, kPlaceholderOffsetY),
                        kPlaceholderFont, kPlaceholderColor);
        return;
    }

    Path line = geometry.linePath();
    canvas.setFillColor(m_model.accentColor().withAlpha(kFillAlpha));
    canvas.fill(geometry.fillOutline(line));

    canvas.setStrokeColor(m_model.accentColor());
    line.setLineWidth(kLineWidth);
    line.setLineCap(LineCap::Round);
    line.setLineJoin(LineJoin::Round);
    canvas.stroke(line);

    if (m_hoveredIndex) {
        drawHoverMarker(canvas, geometry, *m_hoveredIndex);
    }
}

void UsageChartView::drawHoverMarker(Canvas& canvas, const ChartGeometry& geometry,
                                     std::int64_t index) const {
    const std::optional<Point> sample = geometry.samplePosition(index);
    if (!sample) {
        return;
    }
    const Rect& plot = geometry.plotRect();

    Path guide;
    guide.moveTo(Point{sample->x, plot.minY()});
    guide.lineTo(Point{sample->x, plot.maxY()});
    guide.setLineWidth(kGuideWidth);
    canvas.setStrokeColor(kGuideColor);
    canvas.stroke(guide);

    canvas.setFillColor(m_model.accentColor());
    canvas.fill(
        Path::oval(Rect{sample->x - kDotRadius, sample->y - kDotRadius, 2 * kDotRadius, 2 * kDotRadius}));

    // Drawn last so that it covers the line, guide and dot where they meet.
    const std::string text = m_model.bubbleText(index);
    const Size textSize = canvas.measureText(text, kBubbleFont);
    const Rect bubble = geometry.bubbleRect(sample->x, textSize.width);
    canvas.setFillColor(kBubbleColor);
    canvas.fill(Path::roundedRect(bubble, kBubbleRadius, kBubbleRadius));
    canvas.drawText(text, ChartGeometry::bubbleTextRect(bubble), kBubbleFont, kBubbleTextColor);
}

} // namespace quorvane
