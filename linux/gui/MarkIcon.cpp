#include "gui/MarkIcon.h"

#include "gui/UiFont.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>

#include <cmath>

namespace quorvane {

QImage MarkIcon::render(const QString& mark, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    QFont font = UiFont::emojiFont(QGuiApplication::font());
    // The emoji's box is taller than its ink; this fills the square without cutting it.
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(size * 0.8))));
    painter.setFont(font);
    painter.drawText(QRect(0, 0, size, size), Qt::AlignCenter, mark);
    painter.end();
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
