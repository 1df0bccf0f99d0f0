#include "tray/DBusMenuModel.h"

namespace quorvane {

namespace {

const QString kLabel = QStringLiteral("label");
const QString kEnabled = QStringLiteral("enabled");

QVariantMap textItem(const std::string& title, bool enabled) {
    QVariantMap properties{{kLabel, DBusMenuModel::label(title)}};
    if (!enabled) {
        properties.insert(kEnabled, false);
    }
    return properties;
}

// An item's key among its siblings: what it does for commands and choices,
// else its kind and how many of that kind came before it.
std::string siblingKey(const MenuItem& item, std::map<std::string, int>& seen) {
    std::string kind;
    switch (item.kind) {
    case MenuItem::Kind::Separator:
        kind = "-";
        break;
    case MenuItem::Kind::Card:
        kind = "card";
        break;
    case MenuItem::Kind::Informational:
        kind = "i";
        break;
    case MenuItem::Kind::Submenu:
        kind = "s";
        break;
    case MenuItem::Kind::Command:
    case MenuItem::Kind::Choice:
        kind = "c" + std::to_string(static_cast<int>(item.command)) + ":" + std::to_string(item.tag);
        break;
    }
    return kind + "#" + std::to_string(seen[kind]++);
}

} // namespace

DBusMenuModel::DBusMenuModel() {
    m_entries[kRootId].properties.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
}

DBusMenuModel::DBusMenuModel(const std::vector<MenuItem>& items, DBusMenuIds& ids)
    : DBusMenuModel() {
    std::vector<Nested> nested;
    addItems(items, kRootId, {}, ids, nested);
}

const DBusMenuModel::Entry* DBusMenuModel::find(int id) const {
    const auto found = m_entries.find(id);
    return found == m_entries.end() ? nullptr : &found->second;
}

QString DBusMenuModel::label(const std::string& title) {
    QString text = QString::fromStdString(title);
    text.replace(QLatin1Char('_'), QLatin1String("__"));
    return text;
}

DBusMenuShortcut DBusMenuModel::shortcut(const std::string& keyEquivalent) {
    if (keyEquivalent.empty()) {
        return {};
    }
    QString key = QString::fromStdString(keyEquivalent);
    if (key == QLatin1String(",")) {
        key = QStringLiteral("comma");
    } else if (key == QLatin1String(".")) {
        key = QStringLiteral("period");
    }
    return {QStringList{QStringLiteral("Control"), key}};
}

int DBusMenuModel::add(int parentId, int id, QVariantMap properties, Action action, MenuCommand command,
                       std::int64_t tag) {
    m_entries[id] = Entry{std::move(properties), {}, action, command, tag};
    m_entries[parentId].children.push_back(id);
    return id;
}

void DBusMenuModel::addItems(const std::vector<MenuItem>& items, int parentId, const std::string& parentKey,
                             DBusMenuIds& ids, std::vector<Nested>& nested) {
    std::map<std::string, int> seen;
    for (const MenuItem& item : items) {
        const std::string key = parentKey + "/" + siblingKey(item, seen);
        switch (item.kind) {
        case MenuItem::Kind::Separator:
            add(parentId, ids.idFor(key), {{QStringLiteral("type"), QStringLiteral("separator")}});
            break;
        case MenuItem::Kind::Card:
            if (item.card) {
                addCard(*item.card, parentId, key, ids);
            }
            break;
        case MenuItem::Kind::Informational:
            // A line to read, as the Mac shows an item without an action.
            add(parentId, ids.idFor(key), textItem(item.title, false));
            break;
        case MenuItem::Kind::Command: {
            QVariantMap properties = textItem(item.title, item.enabled);
            if (!item.keyEquivalent.empty()) {
                properties.insert(QStringLiteral("shortcut"),
                                  QVariant::fromValue(shortcut(item.keyEquivalent)));
            }
            add(parentId, ids.idFor(key), std::move(properties), Action::Command, item.command, item.tag);
            break;
        }
        case MenuItem::Kind::Choice: {
            QVariantMap properties = textItem(item.title, item.enabled);
            properties.insert(QStringLiteral("toggle-type"), QStringLiteral("radio"));
            properties.insert(QStringLiteral("toggle-state"), item.checked ? 1 : 0);
            add(parentId, ids.idFor(key), std::move(properties), Action::Command, item.command, item.tag);
            break;
        }
        case MenuItem::Kind::Submenu:
            if (parentId == kRootId) {
                addSubmenu(item, key, ids);
            } else {
                nested.push_back(Nested{&item, key});
            }
            break;
        }
    }
}

void DBusMenuModel::addSubmenu(const MenuItem& item, const std::string& key, DBusMenuIds& ids) {
    QVariantMap properties = textItem(item.title, item.enabled);
    properties.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    std::vector<Nested> nested;
    addItems(item.submenu, add(kRootId, ids.idFor(key), std::move(properties)), key, ids, nested);
    // Right after the submenu that holds it ("Settings", then "Refresh Interval: 1 min").
    for (const Nested& inner : nested) {
        addSubmenu(*inner.item, inner.key, ids);
    }
}

// A dashboard reads as one line, its title and balance: the summary lines
// and Details below say the rest, and the line opens the dashboard itself. A
// status card keeps each of its lines, since they say what is wrong.
void DBusMenuModel::addCard(const Card& card, int parentId, const std::string& key, DBusMenuIds& ids) {
    std::vector<std::string> lines;
    for (const CardSubview& subview : card.subviews) {
        if (const auto* text = std::get_if<CardLabel>(&subview); text && !text->text.empty()) {
            lines.push_back(text->text);
        }
    }
    if (card.kind == Card::Kind::Dashboard && lines.size() > 2) {
        lines = {lines[0] + " \xC2\xB7 " + lines[1]};
    }
    for (std::size_t line = 0; line < lines.size(); ++line) {
        add(parentId, ids.idFor(key + "." + std::to_string(line)), textItem(lines[line], true),
            Action::ShowDashboard);
    }
}

QVariantMap DBusMenuModel::properties(int id, const QStringList& propertyNames) const {
    const Entry* entry = find(id);
    if (!entry) {
        return {};
    }
    if (propertyNames.isEmpty()) {
        return entry->properties;
    }
    QVariantMap chosen;
    for (const QString& name : propertyNames) {
        const auto found = entry->properties.constFind(name);
        if (found != entry->properties.constEnd()) {
            chosen.insert(name, found.value());
        }
    }
    return chosen;
}

bool DBusMenuModel::layout(int parentId, int depth, const QStringList& propertyNames,
                           DBusMenuLayoutItem& out) const {
    const Entry* entry = find(parentId);
    if (!entry) {
        return false;
    }
    out.id = parentId;
    out.properties = properties(parentId, propertyNames);
    out.children.clear();
    if (depth == 0) {
        return true;
    }
    for (const int child : entry->children) {
        DBusMenuLayoutItem node;
        layout(child, depth < 0 ? -1 : depth - 1, propertyNames, node);
        out.children.append(std::move(node));
    }
    return true;
}

bool DBusMenuModel::hasLayoutOf(const DBusMenuModel& other) const {
    if (m_entries.size() != other.m_entries.size()) {
        return false;
    }
    for (const auto& [id, entry] : m_entries) {
        const Entry* theirs = other.find(id);
        if (!theirs || theirs->children != entry.children) {
            return false;
        }
    }
    return true;
}

DBusMenuItemPropertiesList DBusMenuModel::changesSince(const DBusMenuModel& before,
                                                       DBusMenuItemKeysList& removed) const {
    DBusMenuItemPropertiesList changed;
    removed.clear();
    for (const auto& [id, entry] : m_entries) {
        const Entry* old = before.find(id);
        if (!old) {
            continue;
        }
        QVariantMap values;
        for (auto property = entry.properties.constBegin(); property != entry.properties.constEnd();
             ++property) {
            const auto was = old->properties.constFind(property.key());
            if (was == old->properties.constEnd() || was.value() != property.value()) {
                values.insert(property.key(), property.value());
            }
        }
        QStringList gone;
        for (auto property = old->properties.constBegin(); property != old->properties.constEnd();
             ++property) {
            if (!entry.properties.contains(property.key())) {
                gone.append(property.key());
            }
        }
        if (!values.isEmpty()) {
            changed.append(DBusMenuItemProperties{id, values});
        }
        if (!gone.isEmpty()) {
            removed.append(DBusMenuItemKeys{id, gone});
        }
    }
    return changed;
}

} // namespace quorvane
