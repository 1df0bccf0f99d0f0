#include "MacCanvas.h"

#import "NSColor+QVNamedColor.h"
#import "NSFont+QVFont.h"
#import "NSString+QVStdString.h"

#import <AppKit/AppKit.h>

namespace quorvane {

namespace {

NSRect nsRect(const Rect& rect) {
    return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}

NSPoint nsPoint(const Point& point) {
    return NSMakePoint(point.x, point.y);
}

NSLineCapStyle lineCapStyle(LineCap cap) {
    switch (cap) {
    case LineCap::Butt:
        return NSLineCapStyleButt;
    case LineCap::Round:
        return NSLineCapStyleRound;
    case LineCap::Square:
        return NSLineCapStyleSquare;
    }
    return NSLineCapStyleButt;
}

NSLineJoinStyle lineJoinStyle(LineJoin join) {
    switch (join) {
    case LineJoin::Miter:
        return NSLineJoinStyleMiter;
    case LineJoin::Round:
        return NSLineJoinStyleRound;
    case LineJoin::Bevel:
        return NSLineJoinStyleBevel;
    }
    return NSLineJoinStyleMiter;
}

void appendElements(NSBezierPath* bezier, const Path& path) {
    for (const Path::Element& element : path.elements()) {
        switch (element.type) {
        case Path::ElementType::MoveTo:
            [bezier moveToPoint:nsPoint(element.point)];
            break;
        case Path::ElementType::LineTo:
            // AppKit raises on a line without a current point; such a line starts the outline instead.
            if ([bezier isEmpty]) {
                [bezier moveToPoint:nsPoint(element.point)];
            } else {
                [bezier lineToPoint:nsPoint(element.point)];
            }
            break;
        case Path::ElementType::Close:
            [bezier closePath];
            break;
        }
    }
}

NSBezierPath* bezierPath(const Path& path) {
    NSBezierPath* bezier = nil;
    switch (path.shape()) {
    case Path::Shape::RoundedRect:
        bezier = [NSBezierPath bezierPathWithRoundedRect:nsRect(path.rect())
                                                 xRadius:path.radiusX()
                                                 yRadius:path.radiusY()];
        break;
    case Path::Shape::Oval:
        bezier = [NSBezierPath bezierPathWithOvalInRect:nsRect(path.rect())];
        break;
    case Path::Shape::Elements:
        bezier = [NSBezierPath bezierPath];
        appendElements(bezier, path);
        break;
    }
    bezier.lineWidth = path.lineWidth();
    bezier.lineCapStyle = lineCapStyle(path.lineCap());
    bezier.lineJoinStyle = lineJoinStyle(path.lineJoin());
    return bezier;
}

NSDictionary<NSAttributedStringKey, id>* textAttributes(const Font& font, const NamedColor& color) {
    return @{
        NSFontAttributeName : [NSFont qv_systemFontWithFont:font],
        NSForegroundColorAttributeName : [NSColor qv_colorWithNamedColor:color],
    };
}

} // namespace

void MacCanvas::fill(const Path& path) {
    [[NSColor qv_colorWithNamedColor:m_fillColor] setFill];
    [bezierPath(path) fill];
}

void MacCanvas::stroke(const Path& path) {
    [[NSColor qv_colorWithNamedColor:m_strokeColor] setStroke];
    [bezierPath(path) stroke];
}

void MacCanvas::drawText(const std::string& text, const Rect& rect, const Font& font,
                         const NamedColor& color) {
    [[NSString qv_stringWithStdString:text] drawInRect:nsRect(rect)
                                        withAttributes:textAttributes(font, color)];
}

Size MacCanvas::measureText(const std::string& text, const Font& font) const {
    const NSSize size = [[NSString qv_stringWithStdString:text]
        sizeWithAttributes:@{NSFontAttributeName : [NSFont qv_systemFontWithFont:font]}];
    return Size{size.width, size.height};
}

} // namespace quorvane
