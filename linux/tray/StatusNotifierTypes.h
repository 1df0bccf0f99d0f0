// The org.kde.StatusNotifierItem wire types: icon pixmaps and the tooltip.
#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>

namespace quorvane {

// (iiay): one square or oblong icon, ARGB32 in network byte order, as the
// protocol asks whatever the machine's own order.
struct SniIconPixmap {
    int width = 0;
    int height = 0;
    QByteArray argb;

    static SniIconPixmap fromImage(const QImage& image);
    QImage toImage() const;
};
using SniIconPixmapList = QList<SniIconPixmap>;

// (sa(iiay)ss): the icon a host may show in the tooltip, its title and its text.
struct SniToolTip {
    QString iconName;
    SniIconPixmapList iconPixmaps;
    QString title;
    QString text;
};

// Before the first object that uses them is registered on a bus.
void registerStatusNotifierTypes();

QDBusArgument& operator<<(QDBusArgument& argument, const SniIconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, SniIconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const SniToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, SniToolTip& toolTip);

} // namespace quorvane

Q_DECLARE_METATYPE(quorvane::SniIconPixmap)
Q_DECLARE_METATYPE(quorvane::SniToolTip)
