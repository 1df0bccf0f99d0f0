#include "cli/AutostartCommand.h"

#include "cli/AutostartEntry.h"

namespace quorvane {

AutostartCommand::AutostartCommand()
    : Command("autostart", {CommandName::Autostart}) {}

ParsedCommandLine AutostartCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    if (arguments.size() != 1 ||
        (arguments[0] != "on" && arguments[0] != "off" && arguments[0] != "status")) {
        return CommandArguments::usageError(word(), arguments.size() > 1
                                                        ? "takes one argument, 'on', 'off' or 'status'"
                                                        : "say 'on', 'off' or 'status'");
    }
    if (invocation.demo) {
        return CommandArguments::usageError(word(), "the demo changes nothing of yours; leave out --demo");
    }
    invocation.command = CommandName::Autostart;
    invocation.autostart = arguments[0];
    return CommandArguments::run(invocation);
}

int AutostartCommand::execute(const Invocation& invocation, CommandIo& io) const {
    const auto action = invocation.autostart == "on"    ? AutostartEntry::Action::On
                        : invocation.autostart == "off" ? AutostartEntry::Action::Off
                                                        : AutostartEntry::Action::Status;
    return AutostartEntry::run(action, io.self, io.out, io.err);
}

} // namespace quorvane
