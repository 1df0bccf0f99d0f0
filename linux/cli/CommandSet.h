// Every command of the command line, found by its word or by what parsing made of it.
#pragma once

#include "cli/Command.h"

#include <memory>
#include <string_view>
#include <vector>

namespace quorvane {

class CommandSet {
public:
    CommandSet();

    // Nothing for a word that names no command.
    const Command* forWord(std::string_view word) const;
    // Nothing for the desktop app and the clipboard's holder, which are not commands.
    const Command* forName(CommandName name) const;

private:
    std::vector<std::unique_ptr<Command>> m_commands;
};

} // namespace quorvane
