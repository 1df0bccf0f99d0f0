#include "cli/CommandSession.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace quorvane {

namespace {

// Often enough that a command ends at once when its answer arrives; the answer
// itself wakes the loop, so this costs nothing while waiting.
constexpr int kPollMs = 10;

} // namespace

CommandSession::CommandSession(const SessionStores& stores, const Clock& clock, const Formatter& formatter,
                               std::ostream& out, std::optional<std::string> keyAnswer)
    : m_clock(clock)
    , m_formatter(formatter)
    , m_alert(std::move(keyAnswer))
    , m_desktop(out) {
    const Platform platform{m_statusItem, stores.settings, stores.secrets, m_http,      clock,     formatter,
                            m_segmenter,  m_timers,        m_alert,        m_clipboard, m_desktop, m_desktop};
    m_delegate = std::make_unique<AppDelegate>(platform, stores.apiBaseUrl);
    if (stores.prepare) {
        stores.prepare(*m_delegate);
    }
}

void CommandSession::launch() {
    m_delegate->applicationDidFinishLaunching();
}

bool CommandSession::waitForRefresh(std::chrono::milliseconds limit) {
    if (!m_delegate->isRefreshing()) {
        return true;
    }
    QDeadlineTimer deadline(limit);
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (!m_delegate->isRefreshing() || deadline.hasExpired()) {
            loop.quit();
        }
    });
    poll.start(kPollMs);
    loop.exec();
    return !m_delegate->isRefreshing();
}

} // namespace quorvane
