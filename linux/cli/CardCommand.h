// `quorvane card`: the dashboard card drawn to a PNG file, optionally with the pointer on a sample.
#pragma once

#include "cli/SessionCommand.h"

namespace quorvane {

// Draws with the desktop's own card widgets, offscreen, so the picture is
// what the menu shows; --hover sends a real pointer event to the chart.
class CardCommand : public SessionCommand {
public:
    CardCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int run(const Invocation& invocation, CommandSession& session, CommandIo& io) const override;
};

} // namespace quorvane
