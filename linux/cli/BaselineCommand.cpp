#include "cli/BaselineCommand.h"

namespace quorvane {

BaselineCommand::BaselineCommand()
    : SessionCommand("baseline", {CommandName::BaselineReset}) {}

ParsedCommandLine BaselineCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    return CommandArguments::withWord(word(), arguments, "reset", CommandName::BaselineReset, invocation);
}

int BaselineCommand::run(const Invocation& /*invocation*/, CommandSession& session, CommandIo& io) const {
    session.delegate().resetBaselineClicked();
    const bool ended = session.waitFor(io.err, "baseline reset");
    io.out << session.statusItem().title() << '\n';
    return ended ? kDone : kNotDone;
}

} // namespace quorvane
