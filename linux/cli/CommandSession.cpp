#include "cli/CommandSession.h"

#include <QEventLoop>
#include <QTimer>

namespace quorvane {

CommandSession::CommandSession(const SessionStores& stores, const Clock& clock, const Formatter& formatter,
                               std::ostream& out)
    : m_clock(clock)
    , m_formatter(formatter)
    , m_desktop(out) {
    const Platform platform{m_statusItem, stores.settings, stores.secrets, m_http,      clock,     formatter,
                            m_segmenter,  m_timers,        m_alert,        m_clipboard, m_desktop, m_desktop};
    m_delegate = std::make_unique<AppDelegate>(platform, stores.apiBaseUrl);
    if (stores.prepare) {
        stores.prepare();
    }
}

void CommandSession::launch() {
    m_delegate->applicationDidFinishLaunching();
}

bool CommandSession::waitForRefresh(std::chrono::milliseconds limit) {
    if (!m_delegate->isRefreshing()) {
        return true;
    }
    QEventLoop loop;
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    m_delegate->setStateListener([this, &loop] {
        if (!m_delegate->isRefreshing()) {
            loop.quit();
        }
    });
    loop.exec();
    m_delegate->setStateListener({});
    return !m_delegate->isRefreshing();
}

} // namespace quorvane
