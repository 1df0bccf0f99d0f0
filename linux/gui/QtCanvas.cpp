#include "gui/QtCanvas.h"

#include "gui/EmojiTextLayout.h"
#include "gui/UiFont.h"

#include <QPainterPath>
#include <QPen>
#include <QRectF>

namespace quorvane {

namespace {

// AppKit's default miter limit; Qt's own default of 2 would bevel sharper corners.
constexpr qreal kMiterLimit = 10.0;

Qt::PenCapStyle qtCap(LineCap cap) {
    switch (cap) {
    case LineCap::Butt:
        return Qt::FlatCap;
    case LineCap::Round:
        return Qt::RoundCap;
    case LineCap::Square:
        return Qt::SquareCap;
    }
    return Qt::FlatCap;
}

Qt::PenJoinStyle qtJoin(LineJoin join) {
    switch (join) {
    case LineJoin::Miter:
        return Qt::MiterJoin;
    case LineJoin::Round:
        return Qt::RoundJoin;
    case LineJoin::Bevel:
        return Qt::BevelJoin;
    }
    return Qt::MiterJoin;
}

QRectF qtRect(const Rect& rect) {
    return QRectF(rect.x, rect.y, rect.width, rect.height);
}

// Filled with the non-zero rule, as AppKit fills.
QPainterPath painterPath(const Path& path) {
    QPainterPath result;
    result.setFillRule(Qt::WindingFill);
    switch (path.shape()) {
    case Path::Shape::RoundedRect:
        result.addRoundedRect(qtRect(path.rect()), path.radiusX(), path.radiusY(), Qt::AbsoluteSize);
        break;
    case Path::Shape::Oval:
        result.addEllipse(qtRect(path.rect()));
        break;
    case Path::Shape::Elements:
        for (const Path::Element& element : path.elements()) {
            switch (element.type) {
            case Path::ElementType::MoveTo:
                result.moveTo(element.point.x, element.point.y);
                break;
            case Path::ElementType::LineTo:
                result.lineTo(element.point.x, element.point.y);
                break;
            case Path::ElementType::Close:
                result.closeSubpath();
                break;
            }
        }
        break;
    }
    return result;
}

} // namespace

QtCanvas::QtCanvas(QPainter& painter, const ColorPalette& palette)
    : m_painter(painter)
    , m_palette(palette)
    , m_fillColor(palette.color(NamedColor{ColorName::Label, 1.0}))
    , m_strokeColor(m_fillColor) {
    m_painter.setRenderHint(QPainter::Antialiasing, true);
    m_painter.setRenderHint(QPainter::TextAntialiasing, true);
}

void QtCanvas::setFillColor(const NamedColor& color) {
    m_fillColor = m_palette.color(color);
}

void QtCanvas::setStrokeColor(const NamedColor& color) {
    m_strokeColor = m_palette.color(color);
}

void QtCanvas::fill(const Path& path) {
    m_painter.fillPath(painterPath(path), m_fillColor);
}

void QtCanvas::stroke(const Path& path) {
    QPen pen(m_strokeColor, path.lineWidth(), Qt::SolidLine, qtCap(path.lineCap()), qtJoin(path.lineJoin()));
    pen.setMiterLimit(kMiterLimit);
    m_painter.strokePath(painterPath(path), pen);
}

void QtCanvas::drawText(const std::string& text, const Rect& rect, const Font& font,
                        const NamedColor& color) {
    m_painter.save();
    m_painter.setPen(m_palette.color(color));
    EmojiTextLayout layout(QString::fromStdString(text), UiFont::font(font));
    layout.drawWrapped(m_painter, qtRect(rect));
    m_painter.restore();
}

Size QtCanvas::measureText(const std::string& text, const Font& font) const {
    EmojiTextLayout layout(QString::fromStdString(text), UiFont::font(font));
    const QSizeF size = layout.singleLineSize();
    return Size{size.width(), size.height()};
}

} // namespace quorvane
