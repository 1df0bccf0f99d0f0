#include "tray/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace quorvane {

SniIconPixmap SniIconPixmap::fromImage(const QImage& image) {
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    SniIconPixmap pixmap;
    pixmap.width = argb.width();
    pixmap.height = argb.height();
    pixmap.argb.resize(static_cast<qsizetype>(argb.width()) * argb.height() * 4);
    uchar* out = reinterpret_cast<uchar*>(pixmap.argb.data());
    for (int y = 0; y < argb.height(); ++y) {
        const auto* line = reinterpret_cast<const quint32*>(argb.constScanLine(y));
        for (int x = 0; x < argb.width(); ++x) {
            qToBigEndian(line[x], out);
            out += 4;
        }
    }
    return pixmap;
}

QImage SniIconPixmap::toImage() const {
    if (width <= 0 || height <= 0 || argb.size() != static_cast<qsizetype>(width) * height * 4) {
        return QImage();
    }
    QImage image(width, height, QImage::Format_ARGB32);
    const auto* in = reinterpret_cast<const uchar*>(argb.constData());
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            line[x] = qFromBigEndian<quint32>(in);
            in += 4;
        }
    }
    return image;
}

void registerStatusNotifierTypes() {
    qDBusRegisterMetaType<SniIconPixmap>();
    qDBusRegisterMetaType<SniIconPixmapList>();
    qDBusRegisterMetaType<SniToolTip>();
}

QDBusArgument& operator<<(QDBusArgument& argument, const SniIconPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.argb;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, SniIconPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.argb;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const SniToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.iconPixmaps << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, SniToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.iconPixmaps >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

} // namespace quorvane
