// The drawing surface a view paints on: paths, fills, strokes and text, in the view's coordinates.
#pragma once

#include "values/Font.h"
#include "values/NamedColor.h"
#include "values/Path.h"
#include "values/Rect.h"

#include <string>

namespace quorvane {

// Shaped after the platform's immediate-mode drawing: a current fill and
// stroke colour, then paths filled or stroked with their own line settings.
// Coordinates are those of the view being drawn (flipped: origin top left).
class Canvas {
public:
    virtual ~Canvas() = default;

    virtual void setFillColor(const NamedColor& color) = 0;
    virtual void setStrokeColor(const NamedColor& color) = 0;
    virtual void fill(const Path& path) = 0;
    virtual void stroke(const Path& path) = 0;

    // Draws the text into the rectangle, wrapping as the platform does.
    virtual void drawText(const std::string& text, const Rect& rect, const Font& font,
                          const NamedColor& color) = 0;
    // The size of the text on one line in that font.
    virtual Size measureText(const std::string& text, const Font& font) const = 0;
};

} // namespace quorvane
