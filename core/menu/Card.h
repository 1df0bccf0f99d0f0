// A custom view shown as a menu item: the dashboard or the plainer status card.
#pragma once

#include "chart/UsageChartView.h"
#include "menu/CardLabel.h"
#include "values/Rect.h"

#include <variant>
#include <vector>

namespace quorvane {

using CardSubview = std::variant<CardLabel, UsageChartView>;

struct Card {
    enum class Kind { Dashboard, Status };

    Kind kind = Kind::Status;
    Size size;
    // In the order they are added: later ones draw above earlier ones.
    std::vector<CardSubview> subviews;
};

} // namespace quorvane
