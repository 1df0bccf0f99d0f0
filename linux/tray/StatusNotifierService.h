// Puts the status item and its menu on the session bus and keeps them registered with the panel's watcher.
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

namespace quorvane {

class DBusMenuExporter;
class StatusNotifierItem;

// The watcher (org.kde.StatusNotifierWatcher) is the panel's, and panels come
// and go: a desktop starts its panel after the apps of the session, a user
// restarts waybar, an extension is switched on. The item registers with each
// watcher that appears, and says whether a host shows it. Every call to the
// watcher is asynchronous, so a slow or stuck panel never stalls the app.
class StatusNotifierService : public QObject {
    Q_OBJECT

public:
    static constexpr const char* kWatcherService = "org.kde.StatusNotifierWatcher";
    static constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
    static constexpr const char* kWatcherInterface = "org.kde.StatusNotifierWatcher";

    StatusNotifierService(StatusNotifierItem& item, DBusMenuExporter& menu, QDBusConnection connection,
                          QObject* parent = nullptr);
    ~StatusNotifierService() override;
    StatusNotifierService(const StatusNotifierService&) = delete;
    StatusNotifierService& operator=(const StatusNotifierService&) = delete;

    // Claims the item's bus name, exports the item and its menu and registers
    // with the watcher if there is one. False where no session bus answers or
    // the name cannot be had: there is then no item, ever.
    bool start();

    // True from the moment a watcher is known to exist until it goes away,
    // refuses the item, or says that no host is there to show it.
    bool isHosted() const { return m_hosted; }
    const QString& serviceName() const { return m_serviceName; }

signals:
    void hostedChanged(bool hosted);

private slots:
    void watcherOwnerChanged(const QString& service, const QString& oldOwner, const QString& newOwner);
    void hostRegistered();
    void hostUnregistered();

private:
    void registerWithWatcher();
    void askWhetherAHostIsRegistered();
    void setHosted(bool hosted);

    StatusNotifierItem& m_item;
    DBusMenuExporter& m_menu;
    QDBusConnection m_connection;
    QDBusServiceWatcher m_watcherWatcher;
    QString m_serviceName;
    bool m_started = false;
    bool m_hosted = false;
};

} // namespace quorvane
