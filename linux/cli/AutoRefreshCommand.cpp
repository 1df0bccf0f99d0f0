#include "cli/AutoRefreshCommand.h"

namespace quorvane {

AutoRefreshCommand::AutoRefreshCommand()
    : SessionCommand("auto-refresh", {CommandName::AutoRefresh}) {}

ParsedCommandLine AutoRefreshCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    if (arguments.size() != 1 || (arguments[0] != "on" && arguments[0] != "off")) {
        return CommandArguments::usageError(word(), arguments.size() > 1 ? "takes one argument, 'on' or 'off'"
                                                                         : "say 'on' or 'off'");
    }
    invocation.command = CommandName::AutoRefresh;
    invocation.autoRefreshOn = arguments[0] == "on";
    return CommandArguments::run(invocation);
}

int AutoRefreshCommand::run(const Invocation& invocation, CommandSession& session, CommandIo& io) const {
    AppDelegate& delegate = session.delegate();
    if (delegate.autoRefreshEnabled() != invocation.autoRefreshOn) {
        delegate.toggleAutoRefreshClicked();
    }
    io.out << (delegate.autoRefreshEnabled() ? "Auto-refresh: on, every " + delegate.refreshIntervalLabel()
                                             : std::string("Auto-refresh: off"))
           << '\n';
    return kDone;
}

} // namespace quorvane
