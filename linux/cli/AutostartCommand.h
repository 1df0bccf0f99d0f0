// `quorvane autostart on|off|status`: the app in the desktop's autostart folder.
#pragma once

#include "cli/Command.h"

namespace quorvane {

// Touches neither the settings nor the key, so it opens no session; and the
// demo keeps nothing of the user's, while this changes the user's login.
class AutostartCommand : public Command {
public:
    AutostartCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int execute(const Invocation& invocation, CommandIo& io) const override;
};

} // namespace quorvane
