#include "cli/AutostartCommand.h"

#include "cli/AutostartEntry.h"

#include <utility>

namespace quorvane {

AutostartCommand::AutostartCommand()
    : Command("autostart", {CommandName::Autostart}) {}

ParsedCommandLine AutostartCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    ParsedCommandLine parsed = CommandArguments::withSwitch(word(), arguments, CommandName::Autostart,
                                                            std::move(invocation), &Invocation::autostart);
    if (parsed.outcome == ParsedCommandLine::Outcome::Run && parsed.invocation.demo) {
        return CommandArguments::usageError(word(), "the demo changes nothing of yours; leave out --demo");
    }
    return parsed;
}

int AutostartCommand::execute(const Invocation& invocation, CommandIo& io) const {
    const auto action = invocation.autostart == "on"    ? AutostartEntry::Action::On
                        : invocation.autostart == "off" ? AutostartEntry::Action::Off
                                                        : AutostartEntry::Action::Status;
    return AutostartEntry::run(action, io.self, io.out, io.err);
}

} // namespace quorvane
