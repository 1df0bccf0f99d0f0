#include "cli/KeyCommand.h"

#include "cli/CommandSession.h"
#include "cli/KeyInput.h"
#include "menu/KeyDialog.h"

#include <unistd.h>

namespace quorvane {

KeyCommand::KeyCommand()
    : Command("key", {CommandName::KeySet, CommandName::KeyRemove}) {}

ParsedCommandLine KeyCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    if (arguments.empty() || (arguments[0] != "set" && arguments[0] != "remove")) {
        return CommandArguments::usageError(word(), "say 'key set' or 'key remove'");
    }
    const bool set = arguments[0] == "set";
    if (arguments.size() > 1) {
        return CommandArguments::usageError(set ? "key set" : "key remove",
                                            set ? "takes no arguments: the key is read from standard input, "
                                                  "never from the command line"
                                                : "takes no arguments");
    }
    invocation.command = set ? CommandName::KeySet : CommandName::KeyRemove;
    return CommandArguments::run(invocation);
}

int KeyCommand::execute(const Invocation& invocation, CommandIo& io) const {
    if (invocation.command == CommandName::KeyRemove) {
        const std::unique_ptr<CommandSession> session = io.openSession();
        if (!session) {
            return kNotDone;
        }
        session->delegate().removeAPIKeyClicked();
        io.out << "API key removed.\n";
        return kDone;
    }
    const KeyReading reading =
        KeyInput::read(STDIN_FILENO, STDERR_FILENO, std::string(KeyDialog::kMessage) + ": ");
    if (!reading.text) {
        io.err << "quorvane key set: " << reading.error << '\n';
        return kNotDone;
    }
    const std::optional<std::string> key = KeyDialog::acceptedText(*reading.text);
    if (!key) {
        io.err << "quorvane key set: no key given; nothing changed\n";
        return kNotDone;
    }
    const std::unique_ptr<CommandSession> session = io.openSession();
    if (!session) {
        return kNotDone;
    }
    session->delegate().saveAPIKey(*key);
    const bool ended = session->waitFor(io.err, "key set");
    io.out << session->statusItem().title() << '\n';
    return ended ? kDone : kNotDone;
}

} // namespace quorvane
