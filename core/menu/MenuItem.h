// One entry of the status item's menu: a card, a line of text, a command, a choice, a submenu or a separator.
#pragma once

#include "menu/Card.h"
#include "menu/MenuCommand.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

struct MenuItem {
    enum class Kind { Card, Informational, Command, Choice, Submenu, Separator };

    Kind kind = Kind::Informational;
    std::string title;
    MenuCommand command = MenuCommand::None;
    // One lower-case character with the platform's default modifier, or empty.
    std::string keyEquivalent;
    std::int64_t tag = 0;
    bool checked = false;
    bool enabled = true;
    std::vector<MenuItem> submenu;
    // Shared so that copying a menu tree does not copy the chart's samples.
    std::shared_ptr<const Card> card;

    static MenuItem separator();
    static MenuItem informational(std::string title);
    static MenuItem commandItem(std::string title, MenuCommand command, std::string keyEquivalent = {});
    static MenuItem choice(std::string title, std::int64_t tag, bool checked);
    static MenuItem submenuItem(std::string title, std::vector<MenuItem> items);
    static MenuItem cardItem(Card card);
};

} // namespace quorvane
