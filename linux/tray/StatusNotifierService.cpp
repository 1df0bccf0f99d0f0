#include "tray/StatusNotifierService.h"

#include "tray/DBusMenuExporter.h"
#include "tray/DBusMenuTypes.h"
#include "tray/StatusNotifierItem.h"
#include "tray/StatusNotifierTypes.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QStringList>

#include <algorithm>

namespace quorvane {

namespace {

const QString kHostNamePrefix = QStringLiteral("org.kde.StatusNotifierHost-");

constexpr QDBusConnection::RegisterOptions kExported = QDBusConnection::ExportScriptableSlots |
                                                       QDBusConnection::ExportScriptableSignals |
                                                       QDBusConnection::ExportAllProperties;

QDBusMessage watcherCall(const char* method) {
    return QDBusMessage::createMethodCall(QString::fromLatin1(StatusNotifierService::kWatcherService),
                                          QString::fromLatin1(StatusNotifierService::kWatcherPath),
                                          QString::fromLatin1(StatusNotifierService::kWatcherInterface),
                                          QString::fromLatin1(method));
}

} // namespace

StatusNotifierService::StatusNotifierService(StatusNotifierItem& item, DBusMenuExporter& menu,
                                             QDBusConnection connection, QObject* parent)
    : QObject(parent)
    , m_item(item)
    , m_menu(menu)
    , m_connection(std::move(connection)) {
    m_reregister.setSingleShot(true);
    connect(&m_reregister, &QTimer::timeout, this, [this] {
        if (m_hasWatcher) {
            registerWithWatcher();
        }
    });
    connect(&m_item, &StatusNotifierItem::iconFetched, this, &StatusNotifierService::iconFetched);
}

StatusNotifierService::~StatusNotifierService() {
    if (m_started) {
        m_connection.unregisterObject(QString::fromLatin1(StatusNotifierItem::kObjectPath));
        m_connection.unregisterObject(QString::fromLatin1(DBusMenuExporter::kObjectPath));
    }
}

bool StatusNotifierService::start() {
    if (m_started) {
        return true;
    }
    if (!m_connection.isConnected()) {
        return false;
    }
    registerStatusNotifierTypes();
    registerDBusMenuTypes();
    // The item is known by this connection's unique name and its path, and
    // owns no well-known name: GNOME's extension watches such a name for a
    // new owner and, when the answer comes while it is still reading the
    // item, forgets what it read and drops the item (or keeps it without its
    // menu); on being switched on it would also find the item twice.
    m_serviceName = m_connection.baseService();
    if (!m_connection.registerObject(QString::fromLatin1(StatusNotifierItem::kObjectPath), &m_item,
                                     kExported) ||
        !m_connection.registerObject(QString::fromLatin1(DBusMenuExporter::kObjectPath), &m_menu,
                                     kExported)) {
        m_connection.unregisterObject(QString::fromLatin1(StatusNotifierItem::kObjectPath));
        return false;
    }
    m_started = true;

    const QString watcher = QString::fromLatin1(kWatcherService);
    m_watcherWatcher.setConnection(m_connection);
    m_watcherWatcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcherWatcher.addWatchedService(watcher);
    connect(&m_watcherWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            &StatusNotifierService::watcherOwnerChanged);
    const QString path = QString::fromLatin1(kWatcherPath);
    const QString interface = QString::fromLatin1(kWatcherInterface);
    m_connection.connect(watcher, path, interface, QStringLiteral("StatusNotifierHostRegistered"), this,
                         SLOT(hostRegistered()));
    m_connection.connect(watcher, path, interface, QStringLiteral("StatusNotifierHostUnregistered"), this,
                         SLOT(hostUnregistered()));
    m_connection.connect(watcher, path, interface, QStringLiteral("StatusNotifierItemUnregistered"), this,
                         SLOT(itemUnregistered(QString)));
    // Every name under org.kde, of which the hosts' are picked out.
    m_hostWatcher.setConnection(m_connection);
    m_hostWatcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_hostWatcher.addWatchedService(QStringLiteral("org.kde*"));
    connect(&m_hostWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            &StatusNotifierService::hostNameOwnerChanged);
    listHostNames();

    // Asked of the bus itself, which answers at once: the launch can tell
    // whether a panel is there before it decides what to show.
    if (m_connection.interface()->isServiceRegistered(watcher)) {
        m_hasWatcher = true;
        registerWithWatcher();
    }
    return true;
}

void StatusNotifierService::watcherOwnerChanged(const QString&, const QString&, const QString& newOwner) {
    m_hasWatcher = !newOwner.isEmpty();
    // A new watcher's host may read the item before the registration is
    // answered (GNOME's looks for items on the bus as it starts).
    m_iconFetched = false;
    m_registered = false;
    m_hostRegistered = false;
    m_reregister.stop();
    m_reregisterDelayMs = kReregisterDelayMs;
    if (!m_hasWatcher) {
        updateHosted();
        return;
    }
    // A new or restarted watcher knows nothing of the items registered before.
    registerWithWatcher();
}

void StatusNotifierService::hostRegistered() {
    askWhetherAHostIsRegistered();
}

void StatusNotifierService::hostUnregistered() {
    askWhetherAHostIsRegistered();
}

void StatusNotifierService::listHostNames() {
    const QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListNames"));
    auto* pending = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QStringList> reply = *finished;
        for (const QString& name : reply.value()) {
            if (name.startsWith(kHostNamePrefix)) {
                m_hostNames.insert(name);
            }
        }
    });
}

void StatusNotifierService::hostNameOwnerChanged(const QString& name, const QString&,
                                                 const QString& newOwner) {
    if (!name.startsWith(kHostNamePrefix)) {
        return;
    }
    if (!newOwner.isEmpty()) {
        m_hostNames.insert(name);
        if (m_hasWatcher) {
            askWhetherAHostIsRegistered();
        }
        return;
    }
    m_hostNames.remove(name);
    if (m_hostNames.isEmpty()) {
        // The last host is gone, whatever the watcher says: the next one
        // shows the item by reading it again.
        m_hostRegistered = false;
        m_iconFetched = false;
        updateHosted();
    }
}

void StatusNotifierService::itemUnregistered(const QString& item) {
    if (!isThisItem(item) || !m_hasWatcher) {
        return;
    }
    m_registered = false;
    m_iconFetched = false;
    updateHosted();
    if (!m_reregister.isActive()) {
        m_reregister.start(m_reregisterDelayMs);
        // The next drop waits longer: a watcher that drops every item is not hammered.
        m_reregisterDelayMs = std::min(m_reregisterDelayMs * 2, kMaxReregisterDelayMs);
    }
}

// Watchers name an item by its connection's unique name, alone or with the
// object path joined by nothing (Plasma, waybar) or by "@" (GNOME).
bool StatusNotifierService::isThisItem(const QString& item) const {
    const QString path = QString::fromLatin1(StatusNotifierItem::kObjectPath);
    return item == m_serviceName || item == m_serviceName + path ||
           item == m_serviceName + QLatin1Char('@') + path;
}

void StatusNotifierService::registerWithWatcher() {
    QDBusMessage call = watcherCall("RegisterStatusNotifierItem");
    call << QString::fromLatin1(StatusNotifierItem::kObjectPath);
    auto* pending = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        m_registered = !finished->isError();
        if (!m_registered) {
            updateHosted();
            return;
        }
        askWhetherAHostIsRegistered();
    });
}

void StatusNotifierService::askWhetherAHostIsRegistered() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QString::fromLatin1(kWatcherService), QString::fromLatin1(kWatcherPath),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << QString::fromLatin1(kWatcherInterface) << QStringLiteral("IsStatusNotifierHostRegistered");
    auto* pending = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        if (!reply.isError()) {
            m_hostRegistered = reply.value().variant().toBool();
        } else {
            // A watcher that keeps the property to itself is taken at its
            // word that it watches for a host; one that is gone is no host.
            const QDBusError::ErrorType error = reply.error().type();
            m_hostRegistered = error == QDBusError::UnknownProperty || error == QDBusError::InvalidArgs ||
                               error == QDBusError::UnknownInterface;
        }
        updateHosted();
    });
}

void StatusNotifierService::iconFetched() {
    m_iconFetched = true;
    updateHosted();
}

void StatusNotifierService::updateHosted() {
    const bool hosted = m_registered && m_hostRegistered && m_iconFetched;
    if (hosted) {
        m_reregisterDelayMs = kReregisterDelayMs;
    }
    if (hosted != m_hosted) {
        m_hosted = hosted;
        emit hostedChanged(hosted);
    }
}

} // namespace quorvane
