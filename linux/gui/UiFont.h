// The system UI font at a size and weight of the core's, with colour emoji behind it.
#pragma once

#include "platform/Font.h"

#include <QFont>
#include <QString>

namespace quorvane {

// Sizes are points on the Mac and the cards are laid out 1 px to 1 pt, so a
// size becomes a pixel size here, not a point size that would follow the
// screen's DPI and no longer fit the fixed frames.
class UiFont {
public:
    // Without an installed emoji font the marks draw as empty boxes.
    static constexpr const char* kEmojiFamily = "Noto Color Emoji";

    static QFont font(const Font& font);
    // The same size with only the emoji font, for runs that ask for emoji presentation.
    static QFont emojiFont(const QFont& base);
};

} // namespace quorvane
