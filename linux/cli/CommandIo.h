// What a command runs with: its streams, the program's path, and the way to the program's state.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>

namespace quorvane {

class CommandSession;

struct CommandIo {
    std::ostream& out;
    std::ostream& err;
    // This program's path, for the clipboard's holder and the autostart entry.
    std::string self;
    // Opens the user's (or the demo's) settings and key and a delegate over
    // them; nothing, after saying why on `err`, when that cannot be done.
    // Only commands that need the state call it, so the others touch no store.
    std::function<std::unique_ptr<CommandSession>()> openSession;
};

} // namespace quorvane
