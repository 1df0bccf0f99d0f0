#include "gui/MarkIcon.h"

#include "gui/UiFont.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>

#include <cmath>

namespace quorvane {

namespace {

// The smallest rectangle that holds every pixel that is not wholly transparent.
QRect inkBounds(const QImage& image) {
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(line[x]) != 0) {
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    return bounds;
}

} // namespace

QImage MarkIcon::render(const QString& mark, int size) {
    // Drawn large, then its ink scaled to fill the square: an emoji's box is
    // taller than its ink and the whale is wide and flat, so a glyph drawn
    // at the icon's size covers barely half of a 16-pixel panel icon.
    const int canvas = std::max(64, size * 4);
    QImage glyph(canvas, canvas, QImage::Format_ARGB32_Premultiplied);
    glyph.fill(Qt::transparent);
    QPainter painter(&glyph);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    QFont font = UiFont::emojiFont(QGuiApplication::font());
    font.setPixelSize(canvas / 2);
    painter.setFont(font);
    painter.drawText(QRect(0, 0, canvas, canvas), Qt::AlignCenter, mark);
    painter.end();

    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QRect ink = inkBounds(glyph);
    if (ink.isEmpty()) {
        return image;
    }
    const QImage scaled = glyph.copy(ink).scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter icon(&image);
    icon.drawImage((size - scaled.width()) / 2, (size - scaled.height()) / 2, scaled);
    icon.end();
    return image;
}

QList<QImage> MarkIcon::renderAll(const QString& mark) {
    QList<QImage> images;
    for (const int size : kSizes) {
        images.append(render(mark, size));
    }
    return images;
}

QIcon MarkIcon::icon(const QString& mark) {
    QIcon icon;
    for (const QImage& image : renderAll(mark)) {
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

} // namespace quorvane
