#include "cli/NotificationsCommand.h"

namespace quorvane {

NotificationsCommand::NotificationsCommand()
    : SessionCommand("notifications", {CommandName::Notifications}) {}

ParsedCommandLine NotificationsCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    if (arguments.size() != 1 ||
        (arguments[0] != "on" && arguments[0] != "off" && arguments[0] != "status")) {
        return CommandArguments::usageError(word(), arguments.size() > 1
                                                        ? "takes one argument, 'on', 'off' or 'status'"
                                                        : "say 'on', 'off' or 'status'");
    }
    invocation.command = CommandName::Notifications;
    invocation.notifications = arguments[0];
    return CommandArguments::run(invocation);
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
