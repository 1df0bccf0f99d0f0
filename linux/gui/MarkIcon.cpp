#include "gui/MarkIcon.h"

#include "gui/UiFont.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>

#include <iterator>

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

// The mark drawn large and cut to its ink. An emoji's box is taller than its
// ink and the whale is wide and flat, so a glyph drawn at the icon's size
// covers barely half of a 16-pixel panel icon; scaled from its ink, it
// fills the square. Four times the largest icon keeps every size sharp.
QImage ink(const QString& mark) {
    constexpr int kCanvas = 4 * MarkIcon::kSizes[std::size(MarkIcon::kSizes) - 1];
    QImage glyph(kCanvas, kCanvas, QImage::Format_ARGB32_Premultiplied);
    glyph.fill(Qt::transparent);
    QPainter painter(&glyph);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    QFont font = UiFont::emojiFont(QGuiApplication::font());
    font.setPixelSize(kCanvas / 2);
    painter.setFont(font);
    painter.drawText(QRect(0, 0, kCanvas, kCanvas), Qt::AlignCenter, mark);
    painter.end();
    // copy() of an empty rectangle would be the whole canvas.
    const QRect bounds = inkBounds(glyph);
    return bounds.isEmpty() ? QImage() : glyph.copy(bounds);
}

// The ink scaled into a square of `size`, centred.
QImage fit(const QImage& ink, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    if (ink.isNull()) {
        return image;
    }
    const QImage scaled = ink.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&image);
    painter.drawImage((size - scaled.width()) / 2, (size - scaled.height()) / 2, scaled);
    painter.end();
    return image;
}

} // namespace

QImage MarkIcon::render(const QString& mark, int size) {
    return fit(ink(mark), size);
}

QList<QImage> MarkIcon::renderAll(const QString& mark) {
    const QImage drawn = ink(mark);
    QList<QImage> images;
    for (const int size : kSizes) {
        images.append(fit(drawn, size));
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
