// One command's program: the delegate over the command line's platform, launched as the app is and waited on.
#pragma once

#include "app/AppDelegate.h"
#include "cli/ClipboardHandoff.h"
#include "cli/CommandLineAlert.h"
#include "cli/HeadlessStatusItem.h"
#include "cli/TerminalDesktop.h"
#include "services/LinuxServices.h"

#include <chrono>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace quorvane {

// The same delegate, stores, HTTP client and timers as the desktop app; only
// the parts a person sees are replaced: the status item keeps what it is
// given, no dialog is ever shown (a key comes from the prompt), the
// clipboard is handed over on request, and a web page's address is printed.
// Needs a QCoreApplication (or more) for the network and the timer.
class CommandSession {
public:
    // The longest refresh: its own time-out and a margin for the answer to arrive.
    static constexpr std::chrono::seconds kRefreshWait{BalanceRequest::kTimeoutSeconds + 10};

    // The services and stores outlive the session.
    CommandSession(LinuxServices& services, const SessionStores& stores, std::ostream& out);
    CommandSession(const CommandSession&) = delete;
    CommandSession& operator=(const CommandSession&) = delete;

    // The launch sequence (title, menu, one refresh, the auto-refresh timer),
    // then the wait for that refresh.
    bool launchAndWait(std::ostream& err, std::string_view command);
    // Runs the event loop until the delegate says no refresh is in flight;
    // false, after saying so on `err` for `command`, when kRefreshWait ended first.
    bool waitFor(std::ostream& err, std::string_view command);

    AppDelegate& delegate() { return *m_delegate; }
    const HeadlessStatusItem& statusItem() const { return m_statusItem; }
    const ClipboardHandoff& clipboard() const { return m_clipboard; }
    const Clock& clock() const { return m_services.clock(); }
    const Formatter& formatter() const { return m_services.formatter(); }

private:
    LinuxServices& m_services;
    HeadlessStatusItem m_statusItem;
    CommandLineAlert m_alert;
    ClipboardHandoff m_clipboard;
    TerminalDesktop m_desktop;
    std::unique_ptr<AppDelegate> m_delegate;
};

} // namespace quorvane
