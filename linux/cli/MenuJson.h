// The menu as JSON for scripts: every item, card, label and chart sample of the model, in the model's order.
#pragma once

#include "json/JsonValue.h"
#include "menu/Card.h"
#include "menu/MenuItem.h"
#include "values/Timestamp.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// Members keep a fixed order, so the same menu always gives the same text.
// Balances stay exact: each is the decimal's own text in a JSON string,
// never a JSON number that a reader would take for a double.
class MenuJson {
public:
    // {"title":..., "toolTip":..., "menu":[item...]}
    static JsonValue document(const std::string& title, const std::string& toolTip,
                              const std::vector<MenuItem>& items);

    // {"separator":true}, {"card":card}, or {"title", "enabled", "command",
    // "key", "tag", "state"} with "submenu" on submenu items.
    static JsonValue item(const MenuItem& item);
    // {"kind", "width", "height", "labels", "chart"}; frames as in the model,
    // [x, y, width, height] from the card's bottom left.
    static JsonValue card(const Card& card);

    // "2025-03-01T12:00:00.250Z"; nothing for a time outside what the text can hold.
    static std::optional<std::string> isoTimestamp(Timestamp time);
    // The shortest text that reads back to the same number; null when not finite.
    static JsonValue number(double value);
};

} // namespace quorvane
