// `quorvane key set` and `quorvane key remove`: the API key in the secret store.
#pragma once

#include "cli/Command.h"

namespace quorvane {

// The key is read from standard input (or a prompt that does not echo)
// before anything is opened, and judged by the key dialog's own rule; then it
// is saved as the dialog's Save would, which refreshes. Nothing after "key"
// is ever quoted back: it may be the key itself, typed where it does not belong.
class KeyCommand : public Command {
public:
    KeyCommand();
    ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const override;
    int execute(const Invocation& invocation, CommandIo& io) const override;
};

} // namespace quorvane
