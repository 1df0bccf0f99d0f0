// The delegate's menu tree as dbusmenu items: ids, properties and the command each item sends.
#pragma once

#include "menu/MenuItem.h"
#include "tray/DBusMenuTypes.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace quorvane {

// Built whole from each new tree, as the menu is. Id 0 is the root; the other
// ids run on from `firstId` in the tree's order, so an id handed out for one
// tree is never reused by a later one and a click that crosses a rebuild
// cannot land on a different item.
class DBusMenuModel {
public:
    struct Entry {
        QVariantMap properties;
        std::vector<int> children;
        MenuCommand command = MenuCommand::None;
        std::int64_t tag = 0;
    };

    static constexpr int kRootId = 0;

    DBusMenuModel();
    DBusMenuModel(const std::vector<MenuItem>& items, int firstId);

    // The first id the next tree may use.
    int nextId() const { return m_nextId; }
    const Entry* find(int id) const;

    // The subtree at `parentId`, `depth` levels deep (-1: all of it), with
    // only the named properties (none named: all of them). Nothing for an
    // unknown id.
    bool layout(int parentId, int depth, const QStringList& propertyNames, DBusMenuLayoutItem& out) const;
    QVariantMap properties(int id, const QStringList& propertyNames) const;

    // dbusmenu reads "_" as a mnemonic mark; a title shows its underscores as written.
    static QString label(const std::string& title);
    // [["Control", key]], the key named as the toolkits' accelerator parsers know it.
    static DBusMenuShortcut shortcut(const std::string& keyEquivalent);

private:
    int add(int parentId, QVariantMap properties, MenuCommand command = MenuCommand::None,
            std::int64_t tag = 0);
    void addItems(const std::vector<MenuItem>& items, int parentId);
    void addCard(const Card& card, int parentId);

    std::map<int, Entry> m_entries;
    int m_nextId;
};

} // namespace quorvane
