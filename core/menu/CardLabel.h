// One text label of a card: its text, frame, font, colour, alignment and truncation.
#pragma once

#include "values/Font.h"
#include "values/NamedColor.h"
#include "values/Rect.h"

#include <string>

namespace quorvane {

enum class TextAlignment { Natural, Right };

// Frames are in the card's coordinates with the origin at the bottom left
// (y grows upwards), in points; the Qt shell flips them.
struct CardLabel {
    std::string text;
    Rect frame;
    Font font;
    NamedColor color{ColorName::Label, 1.0};
    TextAlignment alignment = TextAlignment::Natural;
    // Every label cuts its tail with an ellipsis; none wraps.
    bool truncatesTail = true;

    friend bool operator==(const CardLabel&, const CardLabel&) = default;
};

} // namespace quorvane
