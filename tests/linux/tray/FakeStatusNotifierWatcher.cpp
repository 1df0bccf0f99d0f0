#include "FakeStatusNotifierWatcher.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QTimer>

namespace quorvane {

namespace {

const QString kService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kPath = QStringLiteral("/StatusNotifierWatcher");

} // namespace

FakeStatusNotifierWatcher::FakeStatusNotifierWatcher(QDBusConnection connection, QObject* parent)
    : QObject(parent)
    , m_connection(std::move(connection)) {}

FakeStatusNotifierWatcher::~FakeStatusNotifierWatcher() {
    stop();
}

bool FakeStatusNotifierWatcher::start(bool hostRegistered) {
    m_hostRegistered = hostRegistered;
    m_items.clear();
    m_running =
        m_connection.registerObject(
            kPath, this, QDBusConnection::ExportScriptableContents | QDBusConnection::ExportAllProperties) &&
        m_connection.registerService(kService);
    return m_running;
}

void FakeStatusNotifierWatcher::stop() {
    if (m_running) {
        m_connection.unregisterService(kService);
        m_connection.unregisterObject(kPath);
        m_running = false;
    }
}

void FakeStatusNotifierWatcher::setHostRegistered(bool registered) {
    m_hostRegistered = registered;
    if (registered) {
        emit StatusNotifierHostRegistered();
        for (const QString& item : m_items) {
            show(item);
        }
    } else {
        emit StatusNotifierHostUnregistered();
    }
}

void FakeStatusNotifierWatcher::show(const QString& item) {
    const qsizetype slash = item.indexOf(QLatin1Char('/'));
    const QString service = slash < 0 ? item : item.left(slash);
    const QString path = slash < 0 ? QStringLiteral("/StatusNotifierItem") : item.mid(slash);
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
    call << QStringLiteral("org.kde.StatusNotifierItem");
    auto* pending = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        if (!finished->isError()) {
            ++m_itemsRead;
        }
    });
}

void FakeStatusNotifierWatcher::drop(const QString& item) {
    if (m_items.removeAll(item) > 0) {
        emit StatusNotifierItemUnregistered(item);
    }
}

void FakeStatusNotifierWatcher::RegisterStatusNotifierItem(const QString& service) {
    // The protocol allows an object path instead, with the caller as the service.
    const QString item = service.startsWith(QLatin1Char('/')) ? message().service() + service : service;
    ++m_registrations;
    if (m_items.contains(item)) {
        return;
    }
    m_items.append(item);
    emit StatusNotifierItemRegistered(item);
    if (m_dropsLeft > 0) {
        --m_dropsLeft;
        QTimer::singleShot(100, this, [this, item] { drop(item); });
    } else if (m_hostRegistered) {
        show(item);
    }
}

void FakeStatusNotifierWatcher::RegisterStatusNotifierHost(const QString&) {
    setHostRegistered(true);
}

} // namespace quorvane
