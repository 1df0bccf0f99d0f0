#include "main/DesktopApp.h"

#include <QApplication>
#include <QDBusConnection>
#include <QGuiApplication>

namespace quorvane {

DesktopApp::DesktopApp(const SessionStores& stores, const Clock& clock, const Formatter& formatter)
    : m_statusItem(formatter, clock, QDBusConnection::sessionBus(),
                   QGuiApplication::platformName().startsWith(QLatin1String("wayland")), &m_timerHold) {
    const Platform platform{m_statusItem, stores.settings, stores.secrets, m_http,
                            clock,        formatter,       m_segmenter,    m_timers,
                            m_alert,      m_pasteboard,    m_workspace,    m_application};
    m_delegate = std::make_unique<AppDelegate>(platform, stores.apiBaseUrl);
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
