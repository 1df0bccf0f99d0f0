// A canvas that draws nothing, so that a chart benchmark measures the chart and not a renderer.
#pragma once

#include "platform/Canvas.h"

#include <string>

namespace quorvane {

// Text measures as the test canvas measures it (6 pt per byte, the font size
// + 2 high): the bubble's layout depends on the width, so it must be plausible.
class NullCanvas : public Canvas {
public:
    void setFillColor(const NamedColor&) override {}
    void setStrokeColor(const NamedColor&) override {}
    void fill(const Path&) override {}
    void stroke(const Path&) override {}
    void drawText(const std::string&, const Rect&, const Font&, const NamedColor&) override {}
    Size measureText(const std::string& text, const Font& font) const override {
        return Size{6.0 * static_cast<double>(text.size()), font.size + 2.0};
    }
};

} // namespace quorvane
