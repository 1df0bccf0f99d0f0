// `quorvane baseline reset`: spend is counted from now, as the menu's command does.
#pragma once

#include "cli/SessionCommand.h"

namespace quorvane {

// The reset refreshes, so the new baseline is the balance the answer brings;
// the command waits for it and prints the title it left.
class BaselineCommand : public SessionCommand {
public:
    BaselineCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int run(const Invocation& invocation, CommandSession& session, CommandIo& io) const override;
};

} // namespace quorvane
