#include "tray/DBusMenuTypes.h"

#include <QDBusMetaType>

namespace quorvane {

void registerDBusMenuTypes() {
    qDBusRegisterMetaType<DBusMenuLayoutItem>();
    qDBusRegisterMetaType<QList<DBusMenuLayoutItem>>();
    qDBusRegisterMetaType<DBusMenuItemProperties>();
    qDBusRegisterMetaType<DBusMenuItemPropertiesList>();
    qDBusRegisterMetaType<DBusMenuItemKeys>();
    qDBusRegisterMetaType<DBusMenuItemKeysList>();
    qDBusRegisterMetaType<DBusMenuEvent>();
    qDBusRegisterMetaType<DBusMenuEventList>();
    qDBusRegisterMetaType<DBusMenuShortcut>();
    // QtDBus finds a slot's or signal's argument types by the names written
    // in its signature; a list known only as QList<...> leaves EventGroup and
    // ItemsPropertiesUpdated off the bus, and hosts built on libdbusmenu send
    // nothing but EventGroup.
    qRegisterMetaType<DBusMenuItemPropertiesList>("quorvane::DBusMenuItemPropertiesList");
    qRegisterMetaType<DBusMenuItemKeysList>("quorvane::DBusMenuItemKeysList");
    qRegisterMetaType<DBusMenuEventList>("quorvane::DBusMenuEventList");
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuLayoutItem& item) {
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const DBusMenuLayoutItem& child : item.children) {
        argument << QDBusVariant(QVariant::fromValue(child));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuLayoutItem& item) {
    argument.beginStructure();
    argument >> item.id >> item.properties;
    item.children.clear();
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        // A child arrives as a nested argument still to be demarshalled.
        const QVariant value = child.variant();
        DBusMenuLayoutItem node;
        if (value.canConvert<QDBusArgument>()) {
            value.value<QDBusArgument>() >> node;
        } else {
            node = value.value<DBusMenuLayoutItem>();
        }
        item.children.append(node);
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItemProperties& item) {
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItemProperties& item) {
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItemKeys& item) {
    argument.beginStructure();
    argument << item.id << item.names;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItemKeys& item) {
    argument.beginStructure();
    argument >> item.id >> item.names;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.eventId << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.eventId >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

} // namespace quorvane
