// A drawable outline: moves, lines and closes, or a rounded rectangle or oval, with its stroke settings.
#pragma once

#include "values/Point.h"
#include "values/Rect.h"

#include <vector>

namespace quorvane {

enum class LineCap { Butt, Round, Square };
enum class LineJoin { Miter, Round, Bevel };

// A value: copying a path copies its outline and stroke settings, as the
// platform's path copy does.
class Path {
public:
    enum class Shape { Elements, RoundedRect, Oval };
    enum class ElementType { MoveTo, LineTo, Close };
    struct Element {
        ElementType type = ElementType::MoveTo;
        Point point;
        friend bool operator==(const Element&, const Element&) = default;
    };

    Path() = default;
    static Path roundedRect(const Rect& rect, double radiusX, double radiusY);
    static Path oval(const Rect& rect);

    void moveTo(Point p);
    void lineTo(Point p);
    void close();

    void setLineWidth(double width) { m_lineWidth = width; }
    void setLineCap(LineCap cap) { m_lineCap = cap; }
    void setLineJoin(LineJoin join) { m_lineJoin = join; }

    Shape shape() const { return m_shape; }
    const std::vector<Element>& elements() const { return m_elements; }
    // The rectangle and radii of a rounded rectangle or oval.
    const Rect& rect() const { return m_rect; }
    double radiusX() const { return m_radiusX; }
    double radiusY() const { return m_radiusY; }
    double lineWidth() const { return m_lineWidth; }
    LineCap lineCap() const { return m_lineCap; }
    LineJoin lineJoin() const { return m_lineJoin; }

    friend bool operator==(const Path&, const Path&) = default;

private:
    Shape m_shape = Shape::Elements;
    std::vector<Element> m_elements;
    Rect m_rect;
    double m_radiusX = 0.0;
    double m_radiusY = 0.0;
    // The platform's defaults for a new path.
    double m_lineWidth = 1.0;
    LineCap m_lineCap = LineCap::Butt;
    LineJoin m_lineJoin = LineJoin::Miter;
};

} // namespace quorvane
