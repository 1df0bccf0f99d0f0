#include "cli/IntervalCommand.h"

#include "balance/AutoRefreshSettings.h"
#include "cli/CommandLine.h"

#include <algorithm>
#include <cctype>

namespace quorvane {

IntervalCommand::IntervalCommand()
    : SessionCommand("interval", {CommandName::Interval}) {}

ParsedCommandLine IntervalCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    std::string text;
    for (const std::string& argument : arguments) {
        text += (text.empty() ? "" : " ") + argument;
    }
    const auto lowered = [](std::string_view value) {
        std::string result(value);
        std::transform(result.begin(), result.end(), result.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return result;
    };
    std::string choices;
    for (const RefreshIntervalChoice& choice : AutoRefreshSettings::kChoices) {
        choices += (choices.empty() ? "" : ", ") + std::to_string(choice.seconds);
        if (lowered(text) == lowered(choice.label) || text == std::to_string(choice.seconds)) {
            invocation.command = CommandName::Interval;
            invocation.intervalSeconds = choice.seconds;
            return CommandArguments::run(invocation);
        }
    }
    for (const RefreshIntervalChoice& choice : AutoRefreshSettings::kChoices) {
        choices += ", '" + std::string(choice.label) + "'";
    }
    if (text.empty()) {
        return CommandArguments::usageError(word(), "say one of " + choices);
    }
    return CommandArguments::usageError(word(), CommandLine::quoted(text) + " is not one of " + choices);
}

int IntervalCommand::run(const Invocation& invocation, CommandSession& session, CommandIo& io) const {
    AppDelegate& delegate = session.delegate();
    delegate.refreshIntervalClicked(invocation.intervalSeconds);
    io.out << "Refresh interval: " << delegate.refreshIntervalLabel()
           << (delegate.autoRefreshEnabled() ? "" : " (auto-refresh is off)") << '\n';
    return kDone;
}

} // namespace quorvane
