// Carries out one command of the command line against the program and prints what it says.
#pragma once

#include "cli/CommandSession.h"
#include "cli/Invocation.h"
#include "cli/SessionStores.h"

#include <optional>
#include <ostream>
#include <string>

namespace quorvane {

// Commands that show the program's state start it as the app does and wait
// for the first refresh; commands that change something perform the menu's
// command without that launch (no refresh of their own, no timer) and wait
// for any refresh the command starts. Exit statuses: 0 done (a failed
// refresh is a state the output shows), 1 not done, 2 usage.
class CommandRunner {
public:
    static constexpr int kDone = 0;
    static constexpr int kNotDone = 1;
    static constexpr int kUsage = 2;

    // `self` is this program's path, for the clipboard's holder.
    CommandRunner(std::ostream& out, std::ostream& err, std::string self);

    int run(const Invocation& invocation, const SessionStores& stores, const Clock& clock,
            const Formatter& formatter);

private:
    int status(CommandSession& session, bool json);
    int summary(CommandSession& session, bool copy);
    int menu(CommandSession& session, bool json);
    int card(CommandSession& session, const Invocation& invocation);
    int perform(CommandSession& session, const Invocation& invocation);
    // The key for "key set", read and judged before anything changes.
    std::optional<std::string> readKey();
    // Launches and waits for the first refresh; false (after saying so) when it did not end.
    bool launchAndWait(CommandSession& session, const char* command);
    bool wait(CommandSession& session, const char* command);
    // Waits for the refresh a change started and prints the title it left.
    int finish(CommandSession& session, const char* command);

    std::ostream& m_out;
    std::ostream& m_err;
    std::string m_self;
};

} // namespace quorvane
