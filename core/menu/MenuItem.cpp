#include "menu/MenuItem.h"

namespace quorvane {

MenuItem MenuItem::separator() {
    MenuItem item;
    item.kind = Kind::Separator;
    return item;
}

MenuItem MenuItem::informational(std::string title) {
    MenuItem item;
    item.kind = Kind::Informational;
    item.title = std::move(title);
    return item;
}

MenuItem MenuItem::commandItem(std::string title, MenuCommand command, std::string keyEquivalent) {
    MenuItem item;
    item.kind = Kind::Command;
    item.title = std::move(title);
    item.command = command;
    item.keyEquivalent = std::move(keyEquivalent);
    return item;
}

MenuItem MenuItem::choice(std::string title, std::int64_t tag, bool checked) {
    MenuItem item;
    item.kind = Kind::Choice;
    item.title = std::move(title);
    item.command = MenuCommand::RefreshInterval;
    item.tag = tag;
    item.checked = checked;
    return item;
}

MenuItem MenuItem::submenuItem(std::string title, std::vector<MenuItem> items) {
    MenuItem item;
    item.kind = Kind::Submenu;
    item.title = std::move(title);
    item.submenu = std::move(items);
    return item;
}

MenuItem MenuItem::cardItem(Card card) {
    MenuItem item;
    item.kind = Kind::Card;
    item.card = std::make_shared<const Card>(std::move(card));
    return item;
}

} // namespace quorvane
