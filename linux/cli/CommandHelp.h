// The command line's help pages: the overview and one page per command.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

class CommandHelp {
public:
    static std::string overview();
    // Nothing for a word that is not a command.
    static std::optional<std::string> forCommand(std::string_view command);
};

} // namespace quorvane
