#include "cli/SummaryCommand.h"

namespace quorvane {

SummaryCommand::SummaryCommand()
    : SessionCommand("summary", {CommandName::Summary}) {}

ParsedCommandLine SummaryCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    invocation.command = CommandName::Summary;
    return CommandArguments::withFlag(word(), arguments, "--copy", invocation, &Invocation::copy);
}

int SummaryCommand::run(const Invocation& invocation, CommandSession& session, CommandIo& io) const {
    const bool ended = session.launchAndWait(io.err, word());
    io.out << session.delegate().balanceSummary() << '\n' << std::flush;
    if (invocation.copy) {
        session.delegate().copySummaryClicked();
        const std::string failure = session.clipboard().deliver(io.self);
        if (!failure.empty()) {
            io.err << "quorvane summary: " << failure << '\n';
            return kNotDone;
        }
    }
    return ended ? kDone : kNotDone;
}

} // namespace quorvane
