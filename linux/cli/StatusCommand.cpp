#include "cli/StatusCommand.h"

#include "cli/StatusJson.h"
#include "json/JsonWriter.h"

namespace quorvane {

StatusCommand::StatusCommand()
    : SessionCommand("status", {CommandName::Status}) {}

ParsedCommandLine StatusCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    invocation.command = CommandName::Status;
    return CommandArguments::withFlag(word(), arguments, "--json", invocation, &Invocation::json);
}

int StatusCommand::run(const Invocation& invocation, CommandSession& session, CommandIo& io) const {
    const bool ended = session.launchAndWait(io.err, word());
    const AppDelegate& delegate = session.delegate();
    const std::string& title = session.statusItem().title();
    if (invocation.json) {
        io.out << JsonWriter::write(
                      StatusJson::document(title, delegate.appMark(), delegate.balanceSummary()))
               << '\n';
    } else {
        io.out << title << '\n';
    }
    return ended ? kDone : kNotDone;
}

} // namespace quorvane
