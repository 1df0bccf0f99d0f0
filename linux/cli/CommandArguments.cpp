#include "cli/CommandArguments.h"

#include "cli/CommandLine.h"

#include <algorithm>
#include <charconv>

namespace quorvane {

ParsedCommandLine CommandArguments::usageError(std::string_view command, const std::string& message) {
    ParsedCommandLine parsed;
    parsed.outcome = ParsedCommandLine::Outcome::UsageError;
    const std::string where = command.empty() ? "quorvane" : "quorvane " + std::string(command);
    parsed.text = where + ": " + message + "; see '" + where + " --help'";
    return parsed;
}

ParsedCommandLine CommandArguments::help(std::string text) {
    ParsedCommandLine parsed;
    parsed.outcome = ParsedCommandLine::Outcome::Help;
    parsed.text = std::move(text);
    return parsed;
}

ParsedCommandLine CommandArguments::run(const Invocation& invocation) {
    ParsedCommandLine parsed;
    parsed.invocation = invocation;
    return parsed;
}

std::optional<std::int64_t> CommandArguments::wholeNumber(std::string_view text) {
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

std::optional<ParsedCommandLine> CommandArguments::readOptions(std::string_view command, List arguments,
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

ParsedCommandLine CommandArguments::withFlag(std::string_view command, List arguments,
                                             const std::string& flag, const Invocation& invocation,
                                             bool Invocation::*field) {
    Options options;
    options.flags[flag] = false;
    if (auto error = readOptions(command, arguments, options)) {
        return *error;
    }
    Invocation flagged = invocation;
    flagged.*field = options.flags[flag];
    return run(flagged);
}

ParsedCommandLine CommandArguments::withWord(std::string_view command, List arguments, std::string_view word,
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

ParsedCommandLine CommandArguments::withSwitch(std::string_view command, List arguments, CommandName name,
                                               Invocation invocation, std::string Invocation::*field) {
    if (arguments.size() != 1 ||
        (arguments[0] != "on" && arguments[0] != "off" && arguments[0] != "status")) {
        return usageError(command, arguments.size() > 1 ? "takes one argument, 'on', 'off' or 'status'"
                                                        : "say 'on', 'off' or 'status'");
    }
    invocation.command = name;
    invocation.*field = arguments[0];
    return run(invocation);
}

} // namespace quorvane
