// A canvas that writes down every fill, stroke and text as one line, so a drawing compares as text.
#pragma once

#include "platform/Canvas.h"

#include <charconv>
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
    void fill(const Path& path) override {
        m_operations.push_back("fill " + shape(path) + " " + color(m_fillColor));
    }
    void stroke(const Path& path) override {
        const LineCap cap = path.lineCap();
        const LineJoin join = path.lineJoin();
        m_operations.push_back("stroke " + shape(path) + " w" + number(path.lineWidth()) +
                               (cap == LineCap::Round    ? " round"
                                : cap == LineCap::Square ? " square"
                                                         : " butt") +
                               (join == LineJoin::Round   ? " round "
                                : join == LineJoin::Bevel ? " bevel "
                                                          : " miter ") +
                               color(m_strokeColor));
    }
    void drawText(const std::string& text, const Rect& rect, const Font& font,
                  const NamedColor& textColor) override {
        m_operations.push_back("text \"" + text + "\" in " + rectText(rect) + " " + number(font.size) + " " +
                               std::string(fontWeightText(font.weight)) + " " + color(textColor));
    }
    Size measureText(const std::string& text, const Font& font) const override {
        double codePoints = 0;
        for (const char byte : text) {
            // Continuation bytes (10xxxxxx) belong to the code point before them.
            codePoints += (static_cast<unsigned char>(byte) & 0xC0) != 0x80 ? 1 : 0;
        }
        return Size{6.0 * codePoints, font.size + 2.0};
    }

    const std::vector<std::string>& operations() const { return m_operations; }

private:
    static std::string number(double value) {
        char buffer[32];
        return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
    }
    static std::string rectText(const Rect& rect) {
        return number(rect.x) + " " + number(rect.y) + " " + number(rect.width) + " " + number(rect.height);
    }
    static std::string color(const NamedColor& color) {
        return std::string(colorNameText(color.name)) + "@" + number(color.alpha);
    }
    static std::string shape(const Path& path) {
        if (path.shape() != Path::Shape::Elements) {
            return path.shape() == Path::Shape::Oval
                       ? "oval " + rectText(path.rect())
                       : "roundedRect " + rectText(path.rect()) + " r" + number(path.radiusX()) + " " +
                             number(path.radiusY());
        }
        std::string text = "path";
        for (const Path::Element& element : path.elements()) {
            const bool move = element.type == Path::ElementType::MoveTo;
            text += element.type == Path::ElementType::Close
                        ? " Z"
                        : (move ? " M " : " L ") + number(element.point.x) + " " + number(element.point.y);
        }
        return text;
    }

    NamedColor m_fillColor;
    NamedColor m_strokeColor;
    std::vector<std::string> m_operations;
};

} // namespace quorvane
