#include "fakes/RecordingCanvas.h"

#include <charconv>
#include <cstddef>

namespace quorvane {

namespace {

std::string number(double value) {
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::string rectText(const Rect& rect) {
    return number(rect.x) + " " + number(rect.y) + " " + number(rect.width) + " " + number(rect.height);
}

std::string colorText(const NamedColor& color) {
    return std::string(colorNameText(color.name)) + "@" + number(color.alpha);
}

std::string shapeText(const Path& path) {
    switch (path.shape()) {
    case Path::Shape::RoundedRect:
        return "roundedRect " + rectText(path.rect()) + " r" + number(path.radiusX()) + " " +
               number(path.radiusY());
    case Path::Shape::Oval:
        return "oval " + rectText(path.rect());
    case Path::Shape::Elements:
        break;
    }
    std::string text = "path";
    for (const Path::Element& element : path.elements()) {
        switch (element.type) {
        case Path::ElementType::MoveTo:
            text += " M " + number(element.point.x) + " " + number(element.point.y);
            break;
        case Path::ElementType::LineTo:
            text += " L " + number(element.point.x) + " " + number(element.point.y);
            break;
        case Path::ElementType::Close:
            text += " Z";
            break;
        }
    }
    return text;
}

std::string capText(LineCap cap) {
    switch (cap) {
    case LineCap::Butt:
        return "butt";
    case LineCap::Round:
        return "round";
    case LineCap::Square:
        return "square";
    }
    return "butt";
}

std::string joinText(LineJoin join) {
    switch (join) {
    case LineJoin::Miter:
        return "miter";
    case LineJoin::Round:
        return "round";
    case LineJoin::Bevel:
        return "bevel";
    }
    return "miter";
}

} // namespace

void RecordingCanvas::fill(const Path& path) {
    m_operations.push_back("fill " + shapeText(path) + " " + colorText(m_fillColor));
}

void RecordingCanvas::stroke(const Path& path) {
    m_operations.push_back("stroke " + shapeText(path) + " w" + number(path.lineWidth()) + " " +
                           capText(path.lineCap()) + " " + joinText(path.lineJoin()) + " " +
                           colorText(m_strokeColor));
}

void RecordingCanvas::drawText(const std::string& text, const Rect& rect, const Font& font,
                               const NamedColor& color) {
    m_operations.push_back("text \"" + text + "\" in " + rectText(rect) + " " + number(font.size) + " " +
                           std::string(fontWeightText(font.weight)) + " " + colorText(color));
}

Size RecordingCanvas::measureText(const std::string& text, const Font& font) const {
    std::size_t codePoints = 0;
    for (const char byte : text) {
        // Continuation bytes (10xxxxxx) belong to the code point before them.
        if ((static_cast<unsigned char>(byte) & 0xC0) != 0x80) {
            ++codePoints;
        }
    }
    return Size{6.0 * static_cast<double>(codePoints), font.size + 2.0};
}

} // namespace quorvane
