#include "gui/UiFont.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QStringList>

#include <cmath>

namespace quorvane {

namespace {

QFont::Weight qtWeight(FontWeight weight) {
    switch (weight) {
    case FontWeight::Regular:
        return QFont::Normal;
    case FontWeight::Medium:
        return QFont::Medium;
    case FontWeight::Semibold:
        return QFont::DemiBold;
    case FontWeight::Bold:
        return QFont::Bold;
    }
    return QFont::Normal;
}

} // namespace

QString UiFont::family() {
    QString preferred = QString::fromLatin1(kPreferredFamily);
    if (QFontDatabase::hasFamily(preferred)) {
        return preferred;
    }
    // The application font often names a fontconfig alias ("Sans Serif"); a
    // family list must start with a real family or Qt takes the next one as
    // the primary and draws every digit and blank from the emoji font.
    return QFontInfo(QGuiApplication::font()).family();
}

QFont UiFont::font(const Font& font) {
    QFont result = QGuiApplication::font();
    result.setFamilies(QStringList{family(), QString::fromLatin1(kEmojiFamily)});
    result.setPixelSize(std::max(1, static_cast<int>(std::lround(font.size))));
    result.setWeight(qtWeight(font.weight));
    return result;
}

QFont UiFont::emojiFont(const QFont& base) {
    QFont result = base;
    result.setFamilies(QStringList{QString::fromLatin1(kEmojiFamily)});
    return result;
}

} // namespace quorvane
