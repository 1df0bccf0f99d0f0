// `quorvane history clear`: forgets the stored usage history, as the menu's command does.
#pragma once

#include "cli/SessionCommand.h"

namespace quorvane {

// No refresh: clearing asks nothing of the network.
class HistoryCommand : public SessionCommand {
public:
    HistoryCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int run(const Invocation& invocation, CommandSession& session, CommandIo& io) const override;
};

} // namespace quorvane
