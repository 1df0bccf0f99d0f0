#include "values/Path.h"

namespace quorvane {

Path Path::roundedRect(const Rect& rect, double radiusX, double radiusY) {
    Path path;
    path.m_shape = Shape::RoundedRect;
    path.m_rect = rect;
    path.m_radiusX = radiusX;
    path.m_radiusY = radiusY;
    return path;
}

Path Path::oval(const Rect& rect) {
    Path path;
    path.m_shape = Shape::Oval;
    path.m_rect = rect;
    return path;
}

void Path::moveTo(Point p) {
    m_elements.push_back({ElementType::MoveTo, p});
}

void Path::lineTo(Point p) {
    m_elements.push_back({ElementType::LineTo, p});
}

void Path::close() {
    m_elements.push_back({ElementType::Close, {}});
}

} // namespace quorvane
