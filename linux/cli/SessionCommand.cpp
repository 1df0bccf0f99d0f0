#include "cli/SessionCommand.h"

namespace quorvane {

int SessionCommand::execute(const Invocation& invocation, CommandIo& io) const {
    const std::unique_ptr<CommandSession> session = io.openSession();
    if (!session) {
        return kNotDone;
    }
    return run(invocation, *session, io);
}

} // namespace quorvane
