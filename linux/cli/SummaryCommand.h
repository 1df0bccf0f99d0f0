// `quorvane summary`: the plain-text summary, and with --copy the clipboard too.
#pragma once

#include "cli/SessionCommand.h"

namespace quorvane {

// The text is printed before the clipboard is tried, so a desktop without a
// clipboard still gives the user the summary.
class SummaryCommand : public SessionCommand {
public:
    SummaryCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int run(const Invocation& invocation, CommandSession& session, CommandIo& io) const override;
};

} // namespace quorvane
