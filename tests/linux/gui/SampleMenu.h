// The fixed menu the GUI's tests show in each face, the recorder of its commands, and a QMenu as text.
#pragma once

#include "gui/CardWidget.h"
#include "menu/MenuItem.h"

#include <QAction>
#include <QMenu>
#include <QWidgetAction>

#include <string>
#include <utility>
#include <vector>

namespace quorvane {

using Commands = std::vector<std::pair<MenuCommand, std::int64_t>>;

// A command handler that writes down what it is asked to do.
inline auto recorder(Commands& commands) {
    return [&commands](MenuCommand command, std::int64_t tag) {
        commands.emplace_back(command, tag);
    };
}

inline Card cardOf(const std::vector<std::string>& lines, Card::Kind kind = Card::Kind::Status) {
    Card card{kind, Size{330, 60}, {}};
    for (const std::string& line : lines) {
        card.subviews.emplace_back(CardLabel{line, {}, {}});
    }
    return card;
}

// A status card of two lines (and an empty one), a line to read, Refresh
// Now, and Settings with a key command, the interval choices in a submenu
// and a title with an underscore and an ampersand.
inline std::vector<MenuItem> sampleMenu(const std::string& balance = "$0.75", bool fiveMinutes = false) {
    return {
        MenuItem::cardItem(cardOf({"\xF0\x9F\x90\x8B Quorvane", "", balance})), MenuItem::separator(),
        MenuItem::informational("Today: " + balance),
        MenuItem::commandItem("\xF0\x9F\x94\x84 Refresh Now", MenuCommand::Refresh, "r"),
        MenuItem::submenuItem(
            "Settings",
            {MenuItem::commandItem("Set API Key...", MenuCommand::SetAPIKey, ","),
             MenuItem::submenuItem(
                 fiveMinutes ? "Refresh Interval: 5 min" : "Refresh Interval: 1 min",
                 {MenuItem::choice("1 min", 60, !fiveMinutes), MenuItem::choice("5 min", 300, fiveMinutes)}),
             MenuItem::separator(), MenuItem::commandItem("Fish_&_Chips", MenuCommand::OpenBilling, ".")})};
}

// One line an action, submenus indented by two blanks: "[card WxH]", "---",
// "(off) " before a disabled action, "[x] "/"[ ] " a checkable one, "  [Ctrl+R]"
// its shortcut, " >" a submenu. Titles are shown as Qt holds them.
inline std::string text(const QMenu& menu, const std::string& indent = "") {
    std::string out;
    for (const QAction* action : menu.actions()) {
        out += indent + (action->isEnabled() ? "" : "(off) ");
        const auto* widget = qobject_cast<const QWidgetAction*>(action);
        if (const auto* card = widget ? qobject_cast<const CardWidget*>(widget->defaultWidget()) : nullptr) {
            out += "[card " + std::to_string(card->width()) + "x" + std::to_string(card->height()) + "]\n";
            continue;
        }
        out += action->isCheckable() ? (action->isChecked() ? "[x] " : "[ ] ") : "";
        out += action->isSeparator() ? "---" : action->text().toStdString();
        if (!action->shortcut().isEmpty()) {
            out += "  [" + action->shortcut().toString(QKeySequence::PortableText).toStdString() + "]";
        }
        out += action->menu() ? " >\n" + text(*action->menu(), indent + "  ") : "\n";
    }
    return out;
}

} // namespace quorvane
