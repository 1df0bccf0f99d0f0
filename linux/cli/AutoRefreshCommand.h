// `quorvane auto-refresh on|off`: the menu's toggle, said as the state wanted.
#pragma once

#include "cli/SessionCommand.h"

namespace quorvane {

// Toggles only when the stored state differs, so "on" twice stays on.
class AutoRefreshCommand : public SessionCommand {
public:
    AutoRefreshCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int run(const Invocation& invocation, CommandSession& session, CommandIo& io) const override;
};

} // namespace quorvane
