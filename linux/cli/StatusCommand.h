// `quorvane status`: the title the menu bar would show, or the whole state as JSON.
#pragma once

#include "cli/SessionCommand.h"

namespace quorvane {

// What a status bar module runs every few seconds: it launches as the app
// does, waits for the first refresh and prints what the app would show.
class StatusCommand : public SessionCommand {
public:
    StatusCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int run(const Invocation& invocation, CommandSession& session, CommandIo& io) const override;
};

} // namespace quorvane
