// A panel's org.kde.StatusNotifierWatcher for the tests: records the items that register with it.
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QStringList>
#include <QTimer>

namespace quorvane {

// Lives on a connection of its own, as a panel's watcher lives in the
// panel's process; started, stopped and started again, it is a panel
// restarting. While it says a host is registered it plays that host too,
// reading each item's properties as a host does to draw it.
class FakeStatusNotifierWatcher : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ registeredItems)
    // Not scriptable, so that a watcher can leave it out alone (see Host::Unsaid).
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered SCRIPTABLE false)

public:
    // What the watcher says of a host: whether one is there, or nothing, having
    // no IsStatusNotifierHostRegistered (it plays the host all the same).
    enum class Host { Registered, Unsaid };

    explicit FakeStatusNotifierWatcher(QDBusConnection connection)
        : m_connection(std::move(connection)) {}
    ~FakeStatusNotifierWatcher() override { stop(); }

    // Takes the watcher's name.
    bool start(Host host = Host::Registered) {
        m_hostRegistered = true;
        m_items.clear();
        const auto hostProperty = host == Host::Unsaid ? QDBusConnection::RegisterOptions()
                                                       : QDBusConnection::ExportNonScriptableProperties;
        return m_connection.registerObject(kPath, this,
                                           QDBusConnection::ExportScriptableContents | hostProperty) &&
               m_connection.registerService(kService);
    }
    void stop() {
        m_connection.unregisterService(kService);
        m_connection.unregisterObject(kPath);
    }
    void setHostRegistered(bool registered) {
        m_hostRegistered = registered;
        if (!registered) {
            emit StatusNotifierHostUnregistered();
            return;
        }
        emit StatusNotifierHostRegistered();
        for (const QString& item : m_items) {
            show(item);
        }
    }
    // Drops the next `count` items that register, unread, as GNOME's
    // extension does with an item it fails to read.
    void dropNextItems(int count) { m_dropsLeft = count; }
    // Forgets a registered item and says so.
    void drop(const QString& item) {
        if (m_items.removeAll(item) > 0) {
            emit StatusNotifierItemUnregistered(item);
        }
    }

    QStringList registeredItems() const { return m_items; }
    bool isHostRegistered() const { return m_hostRegistered; }
    // Every registration since construction, restarts included.
    int registrations() const { return m_registrations; }
    // How many times a host read an item's properties.
    int itemsRead() const { return m_itemsRead; }

public slots:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString& service) {
        // The protocol allows an object path instead, with the caller as the service.
        const QString item = service.startsWith(u'/') ? message().service() + service : service;
        ++m_registrations;
        if (m_items.contains(item)) {
            return;
        }
        m_items.append(item);
        if (m_dropsLeft > 0) {
            --m_dropsLeft;
            QTimer::singleShot(100, this, [this, item] { drop(item); });
        } else if (m_hostRegistered) {
            show(item);
        }
    }

signals:
    Q_SCRIPTABLE void StatusNotifierItemUnregistered(const QString& service);
    Q_SCRIPTABLE void StatusNotifierHostRegistered();
    Q_SCRIPTABLE void StatusNotifierHostUnregistered();

private:
    static constexpr auto kService = "org.kde.StatusNotifierWatcher";
    static constexpr auto kPath = "/StatusNotifierWatcher";

    // Reads the item's properties, as a host does to draw it.
    void show(const QString& item) {
        const qsizetype slash = item.indexOf(u'/');
        QDBusMessage call = QDBusMessage::createMethodCall(
            item.left(slash), slash < 0 ? QStringLiteral("/StatusNotifierItem") : item.mid(slash),
            QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
        call << QStringLiteral("org.kde.StatusNotifierItem");
        auto* pending = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
        connect(pending, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            m_itemsRead += finished->isError() ? 0 : 1;
        });
    }

    QDBusConnection m_connection;
    QStringList m_items;
    bool m_hostRegistered = true;
    int m_registrations = 0;
    int m_dropsLeft = 0;
    int m_itemsRead = 0;
};

} // namespace quorvane
