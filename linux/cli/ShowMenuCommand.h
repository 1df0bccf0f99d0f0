// `quorvane menu`: the title and the whole menu as text, or as JSON for another program to draw.
#pragma once

#include "cli/SessionCommand.h"

namespace quorvane {

// The same menu the desktop shows, built by the same delegate after the
// first refresh; cards are written out as their lines.
class ShowMenuCommand : public SessionCommand {
public:
    ShowMenuCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int run(const Invocation& invocation, CommandSession& session, CommandIo& io) const override;
};

} // namespace quorvane
