// Draws a menu card into a PNG file with the desktop app's own widgets, offscreen.
#pragma once

#include "menu/Card.h"

#include <QImage>

#include <cstdint>
#include <optional>
#include <string>

namespace quorvane {

// The card is drawn over the menu's own background, as it appears in the
// open menu, at `scale` pixels per point. Hovering sends the chart a real
// pointer move at the sample's position, so the marker, the bubble and the
// guide line are the ones a user would see.
class CardImage {
public:
    enum class Outcome { Drawn, NoSuchSample };
    struct Drawing {
        Outcome outcome = Outcome::Drawn;
        QImage image;
        // Why the sample could not be pointed at, in one line.
        std::string message;
    };

    // Needs a QApplication.
    static Drawing draw(const Card& card, std::optional<std::int64_t> hoverIndex, int scale);
};

} // namespace quorvane
