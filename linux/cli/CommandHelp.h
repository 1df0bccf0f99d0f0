// The command line's help pages: the overview and one page per command.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

class CommandHelp {
public:
    static std::string overview();
    // Nothing for a word that is not a command.
    static std::optional<std::string> forCommand(std::string_view command);
    // The commands with a page of their own, in the overview's order.
    static std::vector<std::string_view> commands();
};

} // namespace quorvane
