// The canvas on AppKit drawing: Bézier paths, system colours and string drawing in the focused view.
#pragma once

#include "platform/Canvas.h"

namespace quorvane {

// Valid only inside a view's drawRect:, where AppKit has focused the view's
// graphics context; coordinates are the view's own, flipped as the view is.
class MacCanvas : public Canvas {
public:
    void setFillColor(const NamedColor& color) override { m_fillColor = color; }
    void setStrokeColor(const NamedColor& color) override { m_strokeColor = color; }
    void fill(const Path& path) override;
    void stroke(const Path& path) override;

    void drawText(const std::string& text, const Rect& rect, const Font& font,
                  const NamedColor& color) override;
    Size measureText(const std::string& text, const Font& font) const override;

private:
    // Set on the context just before each fill or stroke rather than when
    // chosen: drawing a string in between may leave other colours set there.
    NamedColor m_fillColor;
    NamedColor m_strokeColor;
};

} // namespace quorvane
