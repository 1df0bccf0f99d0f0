// The rules every command reads its arguments by: options, whole numbers and usage errors.
#pragma once

#include "cli/Invocation.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvane {

class CommandArguments {
public:
    using List = std::span<const std::string>;

    // Flags without a value and options that take one, as "--name VALUE" or
    // "--name=VALUE"; reading fills in what was given.
    struct Options {
        std::map<std::string, bool> flags;
        std::map<std::string, std::optional<std::string>> values;
    };

    // "quorvane COMMAND: MESSAGE; see 'quorvane COMMAND --help'".
    static ParsedCommandLine usageError(std::string_view command, const std::string& message);
    static ParsedCommandLine help(std::string text);
    static ParsedCommandLine run(const Invocation& invocation);

    // A usage error, or nothing when every argument is one of `options`. No
    // positional arguments.
    static std::optional<ParsedCommandLine> readOptions(std::string_view command, List arguments,
                                                        Options& options);
    // A command whose only option is one flag, stored in `field`.
    static ParsedCommandLine withFlag(std::string_view command, List arguments, const std::string& flag,
                                      const Invocation& invocation, bool Invocation::*field);
    // A command of exactly one word after its own ("baseline reset").
    static ParsedCommandLine withWord(std::string_view command, List arguments, std::string_view word,
                                      CommandName name, Invocation invocation);

    // A command of one argument, "on", "off" or "status", stored in `field`.
    static ParsedCommandLine withSwitch(std::string_view command, List arguments, CommandName name,
                                        Invocation invocation, std::string Invocation::*field);

    // Digits only, as a number that fits; nothing otherwise.
    static std::optional<std::int64_t> wholeNumber(std::string_view text);
};

} // namespace quorvane
