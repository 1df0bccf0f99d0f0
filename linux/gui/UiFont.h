// The UI font of the cards at a size and weight of the core's, with colour emoji behind it.
#pragma once

#include "values/Font.h"

#include <QFont>
#include <QString>

namespace quorvane {

// Sizes are points on the Mac and the cards are laid out 1 px to 1 pt, so a
// size becomes a pixel size here, not a point size that would follow the
// screen's DPI and no longer fit the fixed frames.
//
// The cards' fixed frames were drawn for the Mac's system font. Inter is
// drawn to the same proportions (DejaVu Sans, the usual Linux default, is
// about 15 % wider and cuts "No balance" in the balance's frame), so it is
// used where it is installed, and the desktop's own font where it is not.
class UiFont {
public:
    static constexpr const char* kPreferredFamily = "Inter";
    // Without an installed emoji font the marks draw as empty boxes.
    static constexpr const char* kEmojiFamily = "Noto Color Emoji";

    static QFont font(const Font& font);
    // Inter where it is installed, else the application font's real family.
    static QString family();
    // The same size with only the emoji font, for runs that ask for emoji presentation.
    static QFont emojiFont(const QFont& base);
};

} // namespace quorvane
