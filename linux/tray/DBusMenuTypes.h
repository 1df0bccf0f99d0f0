// The com.canonical.dbusmenu wire types: a layout node, an item's properties and a batched event.
#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace quorvane {

// (ia{sv}av): an item with its children, each child wrapped in a variant as
// the protocol nests them.
struct DBusMenuLayoutItem {
    int id = 0;
    QVariantMap properties;
    QList<DBusMenuLayoutItem> children;
};

// (ia{sv}): one item's properties, as GetGroupProperties answers them.
struct DBusMenuItemProperties {
    int id = 0;
    QVariantMap properties;
};
using DBusMenuItemPropertiesList = QList<DBusMenuItemProperties>;

// (ias): the names of properties an item no longer has.
struct DBusMenuItemKeys {
    int id = 0;
    QStringList names;
};
using DBusMenuItemKeysList = QList<DBusMenuItemKeys>;

// (isvu): one event of an EventGroup call.
struct DBusMenuEvent {
    int id = 0;
    QString eventId;
    QDBusVariant data;
    uint timestamp = 0;
};
using DBusMenuEventList = QList<DBusMenuEvent>;

// aas: a key chord per entry, modifiers first and the key last.
using DBusMenuShortcut = QList<QStringList>;

// Before the first object that uses them is registered on a bus.
void registerDBusMenuTypes();

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuLayoutItem& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuLayoutItem& item);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItemProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItemProperties& item);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItemKeys& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItemKeys& item);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuEvent& event);

} // namespace quorvane

Q_DECLARE_METATYPE(quorvane::DBusMenuLayoutItem)
Q_DECLARE_METATYPE(quorvane::DBusMenuItemProperties)
Q_DECLARE_METATYPE(quorvane::DBusMenuItemKeys)
Q_DECLARE_METATYPE(quorvane::DBusMenuEvent)
