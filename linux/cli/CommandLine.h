// Reads the arguments: the desktop app, one command with its options, a help page, or a usage error.
#pragma once

#include "cli/Invocation.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// Decided before anything else exists, so a command never starts a GUI and
// a mistyped one never starts the app. An argument is never echoed whole:
// messages quote at most a short, printable prefix of it, and nothing at all
// of what follows "key", where a key typed by mistake would otherwise
// reach the terminal.
class CommandLine {
public:
    static constexpr std::string_view kHoldClipboardFlag = "--hold-clipboard";

    // The arguments after the program's name.
    static ParsedCommandLine parse(const std::vector<std::string>& arguments);

    static constexpr std::size_t kQuotedBytes = 40;

    // An argument as a message may quote it: printable, one line, and cut
    // after `limit` bytes (a file name the user needs whole can ask for more).
    static std::string quoted(std::string_view argument, std::size_t limit = kQuotedBytes);
};

} // namespace quorvane
