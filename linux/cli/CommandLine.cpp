#include "cli/CommandLine.h"

#include "balance/AutoRefreshSettings.h"
#include "cli/CommandHelp.h"
#include "values/Utf8.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <map>
#include <optional>
#include <span>

namespace quorvane {

namespace {

using Arguments = std::span<const std::string>;

constexpr int kMaxScale = 8;

bool isHelp(std::string_view argument) {
    return argument == "--help" || argument == "-h";
}

ParsedCommandLine usageError(std::string_view command, const std::string& message) {
    ParsedCommandLine parsed;
    parsed.outcome = ParsedCommandLine::Outcome::UsageError;
    const std::string where = command.empty() ? "quorvane" : "quorvane " + std::string(command);
    parsed.text = where + ": " + message + "; see '" + where + " --help'";
    return parsed;
}

ParsedCommandLine help(std::string text) {
    ParsedCommandLine parsed;
    parsed.outcome = ParsedCommandLine::Outcome::Help;
    parsed.text = std::move(text);
    return parsed;
}

ParsedCommandLine run(const Invocation& invocation) {
    ParsedCommandLine parsed;
    parsed.invocation = invocation;
    return parsed;
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t value = 0;
    if (text.empty() || !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

std::string lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

// Options of one command: flags without a value and options that take one,
// as "--name VALUE" or "--name=VALUE". No positional arguments.
struct Options {
    std::map<std::string, bool> flags;
    std::map<std::string, std::optional<std::string>> values;
};

std::optional<ParsedCommandLine> readOptions(std::string_view command, Arguments arguments,
                                             Options& options) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument.size() < 3 || argument.rfind("--", 0) != 0) {
            return usageError(command, "unexpected argument " + CommandLine::quoted(argument));
        }
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        if (auto flag = options.flags.find(name); flag != options.flags.end()) {
            if (equals != std::string::npos) {
                return usageError(command, name + " takes no value");
            }
            if (flag->second) {
                return usageError(command, name + " given twice");
            }
            flag->second = true;
            continue;
        }
        auto value = options.values.find(name);
        if (value == options.values.end()) {
            const std::string hint = name == "--demo" ? " (--demo goes before the command)" : "";
            return usageError(command, "unknown option " + CommandLine::quoted(name) + hint);
        }
        if (value->second) {
            return usageError(command, name + " given twice");
        }
        if (equals != std::string::npos) {
            value->second = argument.substr(equals + 1);
        } else if (i + 1 < arguments.size()) {
            value->second = arguments[++i];
        } else {
            return usageError(command, name + " needs a value");
        }
    }
    return std::nullopt;
}

ParsedCommandLine flagCommand(std::string_view command, Arguments arguments, const std::string& flag,
                              Invocation invocation, bool Invocation::*field) {
    Options options;
    options.flags[flag] = false;
    if (auto error = readOptions(command, arguments, options)) {
        return *error;
    }
    invocation.*field = options.flags[flag];
    return run(invocation);
}

ParsedCommandLine card(Arguments arguments, Invocation invocation) {
    Options options;
    options.values = {{"--png", std::nullopt}, {"--hover", std::nullopt}, {"--scale", std::nullopt}};
    if (auto error = readOptions("card", arguments, options)) {
        return *error;
    }
    const std::optional<std::string>& png = options.values["--png"];
    if (!png) {
        return usageError("card", "--png FILE is required");
    }
    if (png->empty()) {
        return usageError("card", "--png needs a file name");
    }
    invocation.pngPath = *png;
    if (const std::optional<std::string>& hover = options.values["--hover"]) {
        invocation.hoverIndex = wholeNumber(*hover);
        if (!invocation.hoverIndex) {
            return usageError("card", "--hover needs a sample index, a whole number from 0, not " +
                                          CommandLine::quoted(*hover));
        }
    }
    if (const std::optional<std::string>& scale = options.values["--scale"]) {
        const std::optional<std::int64_t> factor = wholeNumber(*scale);
        if (!factor || *factor < 1 || *factor > kMaxScale) {
            return usageError("card", "--scale needs a whole number from 1 to " + std::to_string(kMaxScale) +
                                          ", not " + CommandLine::quoted(*scale));
        }
        invocation.scale = static_cast<int>(*factor);
    }
    return run(invocation);
}

// "key set" and "key remove" take nothing more, and nothing after "key" is
// ever quoted back: it may be the key itself, typed where it does not belong.
ParsedCommandLine key(Arguments arguments, Invocation invocation) {
    if (arguments.empty() || (arguments[0] != "set" && arguments[0] != "remove")) {
        return usageError("key", "say 'key set' or 'key remove'");
    }
    const bool set = arguments[0] == "set";
    if (arguments.size() > 1) {
        return usageError(set ? "key set" : "key remove",
                          set ? "takes no arguments: the key is read from standard input, never from the "
                                "command line"
                              : "takes no arguments");
    }
    invocation.command = set ? CommandName::KeySet : CommandName::KeyRemove;
    return run(invocation);
}

ParsedCommandLine oneWord(std::string_view command, Arguments arguments, std::string_view word,
                          CommandName name, Invocation invocation) {
    if (arguments.empty() || arguments[0] != word) {
        return usageError(command, "say '" + std::string(command) + " " + std::string(word) + "'");
    }
    if (arguments.size() > 1) {
        return usageError(std::string(command) + " " + std::string(word),
                          "unexpected argument " + CommandLine::quoted(arguments[1]));
    }
    invocation.command = name;
    return run(invocation);
}

ParsedCommandLine autoRefresh(Arguments arguments, Invocation invocation) {
    if (arguments.size() != 1 || (arguments[0] != "on" && arguments[0] != "off")) {
        return usageError("auto-refresh",
                          arguments.size() > 1 ? "takes one argument, 'on' or 'off'" : "say 'on' or 'off'");
    }
    invocation.command = CommandName::AutoRefresh;
    invocation.autoRefreshOn = arguments[0] == "on";
    return run(invocation);
}

// The menu's choices, by their seconds or their label ("5 min", also as two arguments).
ParsedCommandLine interval(Arguments arguments, Invocation invocation) {
    std::string text;
    for (const std::string& argument : arguments) {
        text += (text.empty() ? "" : " ") + argument;
    }
    std::string choices;
    for (const RefreshIntervalChoice& choice : AutoRefreshSettings::kChoices) {
        choices += (choices.empty() ? "" : ", ") + std::to_string(choice.seconds);
        if (lowered(text) == lowered(choice.label) || text == std::to_string(choice.seconds)) {
            invocation.command = CommandName::Interval;
            invocation.intervalSeconds = choice.seconds;
            return run(invocation);
        }
    }
    for (const RefreshIntervalChoice& choice : AutoRefreshSettings::kChoices) {
        choices += ", '" + std::string(choice.label) + "'";
    }
    if (text.empty()) {
        return usageError("interval", "say one of " + choices);
    }
    return usageError("interval", CommandLine::quoted(text) + " is not one of " + choices);
}

// The demo keeps nothing of the user's, and this changes the user's login.
ParsedCommandLine autostart(Arguments arguments, Invocation invocation) {
    if (arguments.size() != 1 ||
        (arguments[0] != "on" && arguments[0] != "off" && arguments[0] != "status")) {
        return usageError("autostart", arguments.size() > 1 ? "takes one argument, 'on', 'off' or 'status'"
                                                            : "say 'on', 'off' or 'status'");
    }
    if (invocation.demo) {
        return usageError("autostart", "the demo changes nothing of yours; leave out --demo");
    }
    invocation.command = CommandName::Autostart;
    invocation.autostart = arguments[0];
    return run(invocation);
}

ParsedCommandLine command(const std::string& word, Arguments arguments, Invocation invocation) {
    if (word == "status") {
        invocation.command = CommandName::Status;
        return flagCommand(word, arguments, "--json", invocation, &Invocation::json);
    }
    if (word == "menu") {
        invocation.command = CommandName::Menu;
        return flagCommand(word, arguments, "--json", invocation, &Invocation::json);
    }
    if (word == "summary") {
        invocation.command = CommandName::Summary;
        return flagCommand(word, arguments, "--copy", invocation, &Invocation::copy);
    }
    if (word == "card") {
        invocation.command = CommandName::Card;
        return card(arguments, invocation);
    }
    if (word == "key") {
        return key(arguments, invocation);
    }
    if (word == "baseline") {
        return oneWord(word, arguments, "reset", CommandName::BaselineReset, invocation);
    }
    if (word == "history") {
        return oneWord(word, arguments, "clear", CommandName::HistoryClear, invocation);
    }
    if (word == "auto-refresh") {
        return autoRefresh(arguments, invocation);
    }
    if (word == "interval") {
        return interval(arguments, invocation);
    }
    if (word == "autostart") {
        return autostart(arguments, invocation);
    }
    return usageError("", "unknown command " + CommandLine::quoted(word));
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
        return run(invocation);
    }
    Invocation invocation;
    std::size_t next = 0;
    for (; next < arguments.size() && arguments[next].rfind("-", 0) == 0; ++next) {
        const std::string& option = arguments[next];
        if (isHelp(option)) {
            return help(CommandHelp::overview());
        }
        if (option != "--demo") {
            return usageError("", "unknown option " + quoted(option));
        }
        if (invocation.demo) {
            return usageError("", "--demo given twice");
        }
        invocation.demo = true;
    }
    if (next == arguments.size()) {
        return run(invocation);
    }
    const std::string& word = arguments[next];
    const Arguments rest = Arguments(arguments).subspan(next + 1);
    if (std::any_of(rest.begin(), rest.end(), [](const std::string& argument) { return isHelp(argument); })) {
        if (const std::optional<std::string> page = CommandHelp::forCommand(word)) {
            return help(*page);
        }
    }
    return command(word, rest, invocation);
}

} // namespace quorvane
