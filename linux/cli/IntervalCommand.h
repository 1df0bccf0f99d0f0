// `quorvane interval`: one of the menu's refresh intervals, by its seconds or its label.
#pragma once

#include "cli/SessionCommand.h"

namespace quorvane {

// "5 min" may come as one argument or two; case does not matter.
class IntervalCommand : public SessionCommand {
public:
    IntervalCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int run(const Invocation& invocation, CommandSession& session, CommandIo& io) const override;
};

} // namespace quorvane
