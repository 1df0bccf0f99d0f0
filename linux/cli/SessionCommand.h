// A command that needs the program's state: it opens the session, then does its work on it.
#pragma once

#include "cli/Command.h"
#include "cli/CommandSession.h"

namespace quorvane {

class SessionCommand : public Command {
public:
    using Command::Command;

    int execute(const Invocation& invocation, CommandIo& io) const final;

protected:
    virtual int run(const Invocation& invocation, CommandSession& session, CommandIo& io) const = 0;
};

} // namespace quorvane
