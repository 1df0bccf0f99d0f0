// A panel's org.kde.StatusNotifierWatcher for the tests: records the items that register with it.
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>

namespace quorvane {

// Lives on a connection of its own, as a panel's watcher lives in the
// panel's process; started, stopped and started again, it is a panel
// restarting. While it says a host is registered it plays that host too,
// reading each item's properties as a host does to draw it.
class FakeStatusNotifierWatcher : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ registeredItems)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    explicit FakeStatusNotifierWatcher(QDBusConnection connection, QObject* parent = nullptr);
    ~FakeStatusNotifierWatcher() override;

    // Takes the watcher's name; `hostRegistered` is what it says of a host.
    bool start(bool hostRegistered = true);
    void stop();
    void setHostRegistered(bool registered);
    // Drops the next `count` items that register, unread, as GNOME's
    // extension does with an item it fails to read.
    void dropNextItems(int count) { m_dropsLeft = count; }
    // Forgets a registered item and says so.
    void drop(const QString& item);

    QStringList registeredItems() const { return m_items; }
    bool isHostRegistered() const { return m_hostRegistered; }
    int protocolVersion() const { return 0; }
    // Every registration since construction, restarts included.
    int registrations() const { return m_registrations; }
    // How many times a host read an item's properties.
    int itemsRead() const { return m_itemsRead; }

public slots:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString& service);
    Q_SCRIPTABLE void RegisterStatusNotifierHost(const QString& service);

signals:
    Q_SCRIPTABLE void StatusNotifierItemRegistered(const QString& service);
    Q_SCRIPTABLE void StatusNotifierItemUnregistered(const QString& service);
    Q_SCRIPTABLE void StatusNotifierHostRegistered();
    Q_SCRIPTABLE void StatusNotifierHostUnregistered();

private:
    void show(const QString& item);

    QDBusConnection m_connection;
    QStringList m_items;
    bool m_hostRegistered = true;
    bool m_running = false;
    int m_registrations = 0;
    int m_dropsLeft = 0;
    int m_itemsRead = 0;
};

} // namespace quorvane
