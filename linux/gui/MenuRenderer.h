// Renders the core's menu tree into a QMenu, replacing whatever the menu held.
#pragma once

#include "menu/MenuCommand.h"
#include "menu/MenuItem.h"

#include <QKeySequence>
#include <QMenu>
#include <QString>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quorvane {

// The tree is rebuilt whole on every change, so the old actions, submenus and
// cards are destroyed here before the new ones are made: nothing is edited in
// place and nothing accumulates.
class MenuRenderer {
public:
    using CommandHandler = std::function<void(MenuCommand command, std::int64_t tag)>;

    explicit MenuRenderer(CommandHandler onCommand);

    void render(const std::vector<MenuItem>& items, QMenu& menu) const;

    // "&" marks a mnemonic in Qt; a title shows its ampersands as written.
    static QString actionText(const std::string& title);
    // The platform's default modifier with the one character: "r" is Ctrl+R, "," is Ctrl+,.
    static QKeySequence shortcut(const std::string& keyEquivalent);

private:
    void addItems(const std::vector<MenuItem>& items, QMenu& target, QMenu& root) const;
    void addCommand(const MenuItem& item, QMenu& target, QMenu& root) const;

    CommandHandler m_onCommand;
};

} // namespace quorvane
