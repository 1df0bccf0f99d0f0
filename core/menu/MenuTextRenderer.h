// A plain-text rendering of a menu tree, for tests and the command line.
#pragma once

#include "menu/MenuItem.h"

#include <string>
#include <vector>

namespace quorvane {

// One line an item, submenus indented by two blanks:
//   [card dashboard] / [card status], then each label's text indented
//   "Today: $0.00"                  informational
//   "🔄 Refresh Now  (r)"           command, with its key equivalent
//   "✓ 1 min" / "  30 sec"          choices, checked or not
//   "Settings >"                    submenu, its items below it
//   "---"                           separator
class MenuTextRenderer {
public:
    static std::string render(const std::vector<MenuItem>& items);
};

} // namespace quorvane
