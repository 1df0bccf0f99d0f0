// Puts the status item and its menu on the session bus and keeps them registered with the panel's watcher.
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

namespace quorvane {

class DBusMenuExporter;
class StatusNotifierItem;

// The watcher (org.kde.StatusNotifierWatcher) is the panel's, and panels come
// and go: a desktop starts its panel after the apps of the session, a user
// restarts waybar, an extension is switched on or off. The item registers
// with each watcher that appears, and again when the watcher drops it (GNOME's
// extension does when it fails to read an item it was told of too early).
// The item counts as hosted only once a host has read its icon, which every
// host does to draw it: a watcher that took the registration has shown
// nothing yet. Hosts that own a name of their own on the bus
// (org.kde.StatusNotifierHost-...) are watched too: Plasma's watcher, in
// kded, goes on saying a host is there after plasmashell has gone. Every call to the watcher is asynchronous,
// so a slow or stuck panel never stalls the app.
class StatusNotifierService : public QObject {
    Q_OBJECT

public:
    static constexpr const char* kWatcherService = "org.kde.StatusNotifierWatcher";
    static constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
    static constexpr const char* kWatcherInterface = "org.kde.StatusNotifierWatcher";
    // The first wait before registering again with a watcher that dropped
    // the item; it doubles on each drop until a host shows the item.
    static constexpr int kReregisterDelayMs = 500;
    static constexpr int kMaxReregisterDelayMs = 30000;

    StatusNotifierService(StatusNotifierItem& item, DBusMenuExporter& menu, QDBusConnection connection,
                          QObject* parent = nullptr);
    ~StatusNotifierService() override;
    StatusNotifierService(const StatusNotifierService&) = delete;
    StatusNotifierService& operator=(const StatusNotifierService&) = delete;

    // Exports the item and its menu and registers with the watcher if there
    // is one. False where no session bus answers or the objects cannot be
    // exported: there is then no item, ever.
    bool start();

    // A watcher owns its name on the bus: a host may show the item soon.
    bool hasWatcher() const { return m_hasWatcher; }
    // True from the moment a host reads the item's icon until the watcher
    // goes away, drops the item, or says that no host is left.
    bool isHosted() const { return m_hosted; }
    // The connection's unique name, by which watchers know the item.
    const QString& serviceName() const { return m_serviceName; }

signals:
    void hostedChanged(bool hosted);

private slots:
    void watcherOwnerChanged(const QString& service, const QString& oldOwner, const QString& newOwner);
    void hostRegistered();
    void hostUnregistered();
    void itemUnregistered(const QString& item);
    void hostNameOwnerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);

private:
    void registerWithWatcher();
    void askWhetherAHostIsRegistered();
    void listHostNames();
    void iconFetched();
    bool isThisItem(const QString& item) const;
    // Hosted is the watcher holding the item, a host there, and its icon
    // read; says so when that changes.
    void updateHosted();

    StatusNotifierItem& m_item;
    DBusMenuExporter& m_menu;
    QDBusConnection m_connection;
    QDBusServiceWatcher m_watcherWatcher;
    QDBusServiceWatcher m_hostWatcher;
    // The hosts' own names now on the bus.
    QSet<QString> m_hostNames;
    QTimer m_reregister;
    int m_reregisterDelayMs = kReregisterDelayMs;
    QString m_serviceName;
    bool m_started = false;
    bool m_hasWatcher = false;
    // The watcher holds the item and says a host is there.
    bool m_registered = false;
    bool m_hostRegistered = false;
    // A host read the icon since this watcher came or last dropped the item.
    bool m_iconFetched = false;
    bool m_hosted = false;
};

} // namespace quorvane
