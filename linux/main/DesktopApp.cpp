#include "main/DesktopApp.h"

#include "gui/MarkIcon.h"

#include <QApplication>
#include <QDBusConnection>
#include <QGuiApplication>

namespace quorvane {

namespace {

bool onWayland() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

DesktopApp::DesktopApp(LinuxServices& services, const SessionStores& stores)
    : m_pasteboard(onWayland())
    , m_statusItem(QDBusConnection::sessionBus(), onWayland(), &services.timerHold()) {
    // X11 window managers and task lists take a window's icon from the window.
    QApplication::setWindowIcon(MarkIcon::icon(QString::fromUtf8("\xF0\x9F\x90\x8B")));
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
