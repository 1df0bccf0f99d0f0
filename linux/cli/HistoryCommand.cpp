#include "cli/HistoryCommand.h"

namespace quorvane {

HistoryCommand::HistoryCommand()
    : SessionCommand("history", {CommandName::HistoryClear}) {}

ParsedCommandLine HistoryCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    return CommandArguments::withWord(word(), arguments, "clear", CommandName::HistoryClear, invocation);
}

int HistoryCommand::run(const Invocation& /*invocation*/, CommandSession& session, CommandIo& io) const {
    session.delegate().clearHistoryClicked();
    io.out << "Usage history cleared.\n";
    return kDone;
}

} // namespace quorvane
