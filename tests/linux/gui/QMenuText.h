// A plain-text picture of a rendered QMenu, to compare whole menus in one assertion.
#pragma once

#include <QMenu>

#include <string>

namespace quorvane {

// One line an action, submenus indented by two blanks:
//   [card 330x190] and its labels' full texts indented, "[chart 2 points]"
//   "Today: $0.00"                  an enabled action without a shortcut
//   "🔄 Refresh Now  [Ctrl+R]"      with the shortcut as Qt spells it
//   "[x] 1 min" / "[ ] 30 sec"      checkable, checked or not
//   "Settings >"                    a submenu, its actions below it
//   "---"                           a separator
//   "(disabled) ..."                before any disabled action
// Titles are shown as Qt holds them, so an escaped "&&" stays doubled.
class QMenuText {
public:
    static std::string render(const QMenu& menu);
};

} // namespace quorvane
