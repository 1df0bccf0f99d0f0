#include "main/DesktopApp.h"

#include <QApplication>
#include <QDBusConnection>
#include <QGuiApplication>

namespace quorvane {

DesktopApp::DesktopApp(LinuxServices& services, const SessionStores& stores)
    : m_statusItem(QDBusConnection::sessionBus(),
                   QGuiApplication::platformName().startsWith(QLatin1String("wayland")),
                   &services.timerHold()) {
    m_delegate = std::make_unique<AppDelegate>(
        services.platform(stores, {m_statusItem, m_alert, m_pasteboard, m_workspace, m_application}),
        stores.apiBaseUrl);
    if (stores.prepare) {
        stores.prepare();
    }
    m_statusItem.setCommandHandler(
        [this](MenuCommand command, std::int64_t tag) { m_delegate->perform(command, tag); });
}

int DesktopApp::run() {
    m_delegate->applicationDidFinishLaunching();
    return QApplication::exec();
}

} // namespace quorvane
