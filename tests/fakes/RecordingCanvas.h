// A canvas that writes down every fill, stroke and text as one line, so a drawing compares as text.
#pragma once

#include "platform/Canvas.h"

#include <string>
#include <vector>

namespace quorvane {

// Lines read like
//   fill roundedRect 0 0 292 52 r10 10 controlBackground@0.55
//   stroke path M 12 12 L 280 40 w2.5 round round systemTeal@1
//   text "Usage graph ..." in 16 21 268 28 11 medium secondaryLabel@1
// with numbers in their shortest exact form. Colour changes are not lines of
// their own: each fill and stroke carries the colour current at that moment.
// Text measures 6 pt per code point wide and the font size + 2 high.
class RecordingCanvas : public Canvas {
public:
    void setFillColor(const NamedColor& color) override { m_fillColor = color; }
    void setStrokeColor(const NamedColor& color) override { m_strokeColor = color; }
    void fill(const Path& path) override;
    void stroke(const Path& path) override;
    void drawText(const std::string& text, const Rect& rect, const Font& font,
                  const NamedColor& color) override;
    Size measureText(const std::string& text, const Font& font) const override;

    const std::vector<std::string>& operations() const { return m_operations; }

private:
    NamedColor m_fillColor;
    NamedColor m_strokeColor;
    std::vector<std::string> m_operations;
};

} // namespace quorvane
