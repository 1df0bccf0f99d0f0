// The title's mark (the whale or the warning sign) as a colour icon at the sizes panels ask for.
#pragma once

#include <QIcon>
#include <QImage>
#include <QList>
#include <QString>

namespace quorvane {

// Drawn from the emoji font, so the icon is the very glyph the title shows
// on the Mac; nothing is shipped as an image file.
class MarkIcon {
public:
    // Panels draw icons from 16 px (a classic tray) to 64 px (a large dock panel).
    static constexpr int kSizes[] = {16, 22, 24, 32, 48, 64};

    static QImage render(const QString& mark, int size);
    static QList<QImage> renderAll(const QString& mark);
    static QIcon icon(const QString& mark);
};

} // namespace quorvane
