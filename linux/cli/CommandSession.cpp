#include "cli/CommandSession.h"

#include <QEventLoop>
#include <QTimer>

namespace quorvane {

CommandSession::CommandSession(LinuxServices& services, const SessionStores& stores, std::ostream& out)
    : m_services(services)
    , m_desktop(out) {
    m_delegate = std::make_unique<AppDelegate>(
        services.platform(stores, {m_statusItem, m_alert, m_clipboard, m_desktop, m_desktop, nullptr}),
        stores.apiBaseUrl);
    if (stores.prepare) {
        stores.prepare();
    }
}

bool CommandSession::launchAndWait(std::ostream& err, std::string_view command) {
    m_delegate->applicationDidFinishLaunching();
    return waitFor(err, command);
}

bool CommandSession::waitFor(std::ostream& err, std::string_view command) {
    if (!m_delegate->isRefreshing()) {
        return true;
    }
    QEventLoop loop;
    QTimer::singleShot(kRefreshWait, &loop, &QEventLoop::quit);
    m_delegate->setStateListener([this, &loop] {
        if (!m_delegate->isRefreshing()) {
            loop.quit();
        }
    });
    loop.exec();
    m_delegate->setStateListener({});
    if (m_delegate->isRefreshing()) {
        err << "quorvane " << command << ": the balance refresh did not end within " << kRefreshWait.count()
            << " seconds\n";
        return false;
    }
    return true;
}

} // namespace quorvane
