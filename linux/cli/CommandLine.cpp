#include "cli/CommandLine.h"

#include "cli/CommandHelp.h"
#include "cli/CommandSet.h"
#include "values/Utf8.h"

#include <algorithm>
#include <optional>

namespace quorvane {

namespace {

bool isHelp(std::string_view argument) {
    return argument == "--help" || argument == "-h";
}

} // namespace

std::string CommandLine::quoted(std::string_view argument, std::size_t limit) {
    const bool utf8 = isValidUtf8(argument);
    std::string text;
    for (const char c : argument) {
        const auto byte = static_cast<unsigned char>(c);
        const bool printable = byte >= 0x20 && byte != 0x7F && (utf8 || byte < 0x80);
        text += printable ? c : '?';
    }
    if (text.size() > limit) {
        std::size_t cut = limit;
        // Back to the start of a character, so the cut never splits one.
        while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) {
            --cut;
        }
        text = text.substr(0, cut) + "...";
    }
    return "'" + text + "'";
}

ParsedCommandLine CommandLine::parse(const std::vector<std::string>& arguments) {
    if (arguments.size() == 1 && arguments[0] == kHoldClipboardFlag) {
        Invocation invocation;
        invocation.command = CommandName::HoldClipboard;
        return CommandArguments::run(invocation);
    }
    Invocation invocation;
    std::size_t next = 0;
    for (; next < arguments.size() && arguments[next].rfind('-', 0) == 0; ++next) {
        const std::string& option = arguments[next];
        if (isHelp(option)) {
            return CommandArguments::help(CommandHelp::overview());
        }
        if (option != "--demo") {
            return CommandArguments::usageError("", "unknown option " + quoted(option));
        }
        if (invocation.demo) {
            return CommandArguments::usageError("", "--demo given twice");
        }
        invocation.demo = true;
    }
    if (next == arguments.size()) {
        return CommandArguments::run(invocation);
    }
    const std::string& word = arguments[next];
    const CommandArguments::List rest = CommandArguments::List(arguments).subspan(next + 1);
    if (std::any_of(rest.begin(), rest.end(), [](const std::string& argument) { return isHelp(argument); })) {
        if (const std::optional<std::string> page = CommandHelp::forCommand(word)) {
            return CommandArguments::help(*page);
        }
    }
    const CommandSet commands;
    if (const Command* command = commands.forWord(word)) {
        return command->parse(rest, invocation);
    }
    return CommandArguments::usageError("", "unknown command " + quoted(word));
}

} // namespace quorvane
