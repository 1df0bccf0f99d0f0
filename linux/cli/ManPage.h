// The quorvane(1) manual page, written from the very texts that --help prints.
#pragma once

#include <string>
#include <string_view>

namespace quorvane {

// The overview and each command's help page become sections of the page as
// they stand, so the manual and --help never tell two stories.
class ManPage {
public:
    static std::string render(std::string_view version);
    // One help text as roff: preformatted lines, with the characters roff
    // would read as its own (backslashes, a leading dot or quote, hyphens) escaped.
    static std::string preformatted(std::string_view text);
};

} // namespace quorvane
