#include "tray/DBusMenuModel.h"

namespace quorvane {

namespace {

QVariantMap textItem(const std::string& title, bool enabled) {
    QVariantMap properties{{QStringLiteral("label"), DBusMenuModel::label(title)}};
    if (!enabled) {
        properties.insert(QStringLiteral("enabled"), false);
    }
    return properties;
}

} // namespace

DBusMenuModel::DBusMenuModel()
    : DBusMenuModel({}, kRootId + 1) {}

DBusMenuModel::DBusMenuModel(const std::vector<MenuItem>& items, int firstId)
    : m_nextId(firstId > kRootId ? firstId : kRootId + 1) {
    m_entries[kRootId].properties.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    addItems(items, kRootId);
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

int DBusMenuModel::add(int parentId, QVariantMap properties, MenuCommand command, std::int64_t tag) {
    const int id = m_nextId++;
    m_entries[id] = Entry{std::move(properties), {}, command, tag};
    m_entries[parentId].children.push_back(id);
    return id;
}

void DBusMenuModel::addItems(const std::vector<MenuItem>& items, int parentId) {
    for (const MenuItem& item : items) {
        switch (item.kind) {
        case MenuItem::Kind::Separator:
            add(parentId, {{QStringLiteral("type"), QStringLiteral("separator")}});
            break;
        case MenuItem::Kind::Card:
            if (item.card) {
                addCard(*item.card, parentId);
            }
            break;
        case MenuItem::Kind::Informational:
            // A line to read, as the Mac shows an item without an action.
            add(parentId, textItem(item.title, false));
            break;
        case MenuItem::Kind::Command: {
            QVariantMap properties = textItem(item.title, item.enabled);
            if (!item.keyEquivalent.empty()) {
                properties.insert(QStringLiteral("shortcut"),
                                  QVariant::fromValue(shortcut(item.keyEquivalent)));
            }
            add(parentId, std::move(properties), item.command, item.tag);
            break;
        }
        case MenuItem::Kind::Choice: {
            QVariantMap properties = textItem(item.title, item.enabled);
            properties.insert(QStringLiteral("toggle-type"), QStringLiteral("checkmark"));
            properties.insert(QStringLiteral("toggle-state"), item.checked ? 1 : 0);
            add(parentId, std::move(properties), item.command, item.tag);
            break;
        }
        case MenuItem::Kind::Submenu: {
            QVariantMap properties = textItem(item.title, item.enabled);
            properties.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
            addItems(item.submenu, add(parentId, std::move(properties)));
            break;
        }
        }
    }
}

// A host's menu holds no custom views: the card's labels become lines to
// read, in the card's order, and its chart stays in the dashboard.
void DBusMenuModel::addCard(const Card& card, int parentId) {
    for (const CardSubview& subview : card.subviews) {
        if (const auto* text = std::get_if<CardLabel>(&subview); text && !text->text.empty()) {
            add(parentId, textItem(text->text, false));
        }
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

} // namespace quorvane
