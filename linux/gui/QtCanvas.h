// The core's drawing surface over a QPainter, antialiased.
#pragma once

#include "gui/ColorPalette.h"
#include "platform/Canvas.h"

#include <QColor>
#include <QFont>
#include <QPainter>

namespace quorvane {

// Keeps AppKit's model of a current fill and stroke colour, so the chart's
// drawing reads the same here as on the Mac. The painter belongs to the caller
// and outlives the canvas.
class QtCanvas : public Canvas {
public:
    QtCanvas(QPainter& painter, const ColorPalette& palette);

    void setFillColor(const NamedColor& color) override;
    void setStrokeColor(const NamedColor& color) override;
    void fill(const Path& path) override;
    void stroke(const Path& path) override;
    void drawText(const std::string& text, const Rect& rect, const Font& font,
                  const NamedColor& color) override;
    Size measureText(const std::string& text, const Font& font) const override;

private:
    QPainter& m_painter;
    ColorPalette m_palette;
    QColor m_fillColor;
    QColor m_strokeColor;
};

} // namespace quorvane
