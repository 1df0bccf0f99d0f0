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
    const HeadlessStatusItem& item = session.statusItem();
    if (invocation.json) {
        // The launch always sets a title; before it the app would read as launched.
        const StatusTitle title =
            item.titleParts().value_or(StatusTitle::of(StatusTitle::State::Launched, delegate.appMark()));
        io.out << JsonWriter::write(StatusJson::document(title, delegate.balanceSummary())) << '\n';
    } else {
        io.out << item.title() << '\n';
    }
    return ended ? kDone : kNotDone;
}

} // namespace quorvane
