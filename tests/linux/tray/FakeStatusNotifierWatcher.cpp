#include "FakeStatusNotifierWatcher.h"

#include <QDBusMessage>

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
    } else {
        emit StatusNotifierHostUnregistered();
    }
}

void FakeStatusNotifierWatcher::RegisterStatusNotifierItem(const QString& service) {
    // The protocol allows an object path instead, with the caller as the service.
    const QString item = service.startsWith(QLatin1Char('/')) ? message().service() + service : service;
    ++m_registrations;
    if (!m_items.contains(item)) {
        m_items.append(item);
        emit StatusNotifierItemRegistered(item);
    }
}

void FakeStatusNotifierWatcher::RegisterStatusNotifierHost(const QString&) {
    setHostRegistered(true);
}

} // namespace quorvane
