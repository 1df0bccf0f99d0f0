// The delegate's menu tree as dbusmenu items: ids, properties and what a click on each does.
#pragma once

#include "menu/MenuItem.h"
#include "tray/DBusMenuIds.h"
#include "tray/DBusMenuTypes.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace quorvane {

// Built whole from each new tree, as the menu is, with ids that stay with
// their items (DBusMenuIds). Hosts draw it in menus of their own, and the
// tree is shaped for what every host can show:
// - a host's menu holds no custom view: the card becomes lines of text, each
//   of which opens the dashboard, since some hosts (GNOME's) open the menu
//   on the primary click;
// - GNOME Shell's menus cannot open a submenu inside a submenu, and open a
//   submenu inline, one row of 37 pixels an item: a submenu inside a
//   submenu moves to the top level right after the one that held it, and
//   its choices are a radio group. So the longest menu, with Settings open,
//   fits an 800-pixel screen below GNOME's top bar.
class DBusMenuModel {
public:
    enum class Action { None, Command, ShowDashboard };

    struct Entry {
        QVariantMap properties;
        std::vector<int> children;
        Action action = Action::None;
        MenuCommand command = MenuCommand::None;
        std::int64_t tag = 0;
    };

    static constexpr int kRootId = DBusMenuIds::kRootId;

    DBusMenuModel();
    DBusMenuModel(const std::vector<MenuItem>& items, DBusMenuIds& ids);

    const Entry* find(int id) const;

    // The subtree at `parentId`, `depth` levels deep (-1: all of it), with
    // only the named properties (none named: all of them). Nothing for an
    // unknown id.
    bool layout(int parentId, int depth, const QStringList& propertyNames, DBusMenuLayoutItem& out) const;
    QVariantMap properties(int id, const QStringList& propertyNames) const;

    // The same items under the same parents in the same order: a host that
    // drew `other` needs only the changed properties.
    bool hasLayoutOf(const DBusMenuModel& other) const;
    // What changed since `before`, item by item: the properties with new
    // values, and in `removed` the names an item no longer has.
    DBusMenuItemPropertiesList changesSince(const DBusMenuModel& before, DBusMenuItemKeysList& removed) const;

    // dbusmenu reads "_" as a mnemonic mark; a title shows its underscores as written.
    static QString label(const std::string& title);
    // [["Control", key]], the key named as the toolkits' accelerator parsers know it.
    static DBusMenuShortcut shortcut(const std::string& keyEquivalent);

private:
    int add(int parentId, int id, QVariantMap properties, Action action = Action::None,
            MenuCommand command = MenuCommand::None, std::int64_t tag = 0);
    // A submenu met below the top level, with its key, moved up after the one that held it.
    struct Nested {
        const MenuItem* item;
        std::string key;
    };

    void addItems(const std::vector<MenuItem>& items, int parentId, const std::string& parentKey,
                  DBusMenuIds& ids, std::vector<Nested>& nested);
    void addSubmenu(const MenuItem& item, const std::string& key, DBusMenuIds& ids);
    void addCard(const Card& card, int parentId, const std::string& key, DBusMenuIds& ids);

    std::map<int, Entry> m_entries;
};

} // namespace quorvane
