#include "cli/NotificationsCommand.h"

#include <utility>

namespace quorvane {

NotificationsCommand::NotificationsCommand()
    : SessionCommand("notifications", {CommandName::Notifications}) {}

ParsedCommandLine NotificationsCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    return CommandArguments::withSwitch(word(), arguments, CommandName::Notifications, std::move(invocation),
                                        &Invocation::notifications);
}

int NotificationsCommand::run(const Invocation& invocation, CommandSession& session, CommandIo& io) const {
    AppDelegate& delegate = session.delegate();
    if (invocation.notifications != "status") {
        delegate.setLowBalanceNotificationsEnabled(invocation.notifications == "on");
    }
    io.out << "Low-balance notifications: " << (delegate.lowBalanceNotificationsEnabled() ? "on" : "off")
           << '\n';
    return kDone;
}

} // namespace quorvane
