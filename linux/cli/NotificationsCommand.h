// `quorvane notifications on|off|status`: whether the desktop app tells a low balance with a notification.
#pragma once

#include "cli/SessionCommand.h"

namespace quorvane {

// The setting lives in the settings store beside the others and is read by
// the desktop app at its next refresh; the command itself refreshes nothing
// and, like every command, never shows a notification.
class NotificationsCommand : public SessionCommand {
public:
    NotificationsCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int run(const Invocation& invocation, CommandSession& session, CommandIo& io) const override;
};

} // namespace quorvane
