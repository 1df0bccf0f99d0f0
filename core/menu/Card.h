// A custom view shown as a menu item: the dashboard or the plainer status card.
#pragma once

#include "chart/UsageChartView.h"
#include "menu/CardLabel.h"
#include "values/Rect.h"

#include <variant>
#include <vector>

namespace quorvane {

using CardSubview = std::variant<CardLabel, UsageChartView>;

// Frames are AppKit's, in the card's unflipped space: origin at the card's
// bottom left, y up. The chart draws in its own flipped space (see UsageChartView).
struct Card {
    enum class Kind { Dashboard, Status };

    Kind kind = Kind::Status;
    Size size;
    // In the order they are added: later ones draw above earlier ones.
    std::vector<CardSubview> subviews;
};

} // namespace quorvane
