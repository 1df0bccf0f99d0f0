#include "main/DesktopApp.h"

#include "gui/MarkIcon.h"
#include "menu/StatusTitle.h"

#include <QApplication>
#include <QDBusConnection>
#include <QGuiApplication>

#include <iostream>

namespace quorvane {

namespace {

// The size notification servers show an app's image at, or scale it down to.
constexpr int kNotificationIconSize = 64;

QString appMark() {
    return QString::fromUtf8(StatusTitle::kAppMark.data(),
                             static_cast<qsizetype>(StatusTitle::kAppMark.size()));
}

bool onWayland() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

DesktopApp::DesktopApp(LinuxServices& services, const SessionStores& stores)
    : m_pasteboard(onWayland())
    , m_statusItem(QDBusConnection::sessionBus(), onWayland(), &services.timerHold())
    , m_notifier(
          QDBusConnection::sessionBus(), MarkIcon::render(appMark(), kNotificationIconSize),
          [this](const QString& token) { m_statusItem.openDashboard(token); }, std::cerr) {
    // X11 window managers and task lists take a window's icon from the window.
    QApplication::setWindowIcon(MarkIcon::icon(appMark()));
    m_delegate =
        std::make_unique<AppDelegate>(services.platform(stores, {m_statusItem, m_alert, m_pasteboard,
                                                                 m_workspace, m_application, &m_notifier}),
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
