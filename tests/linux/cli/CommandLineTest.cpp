// Reading the arguments: what each command line asks for, its help, and the one-line answer to each mistake.
#include "cli/CommandLine.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvane {
namespace {

using Outcome = ParsedCommandLine::Outcome;

// What a run asks for, with the defaults an invocation starts with.
struct Expected {
    CommandName command = CommandName::DesktopApp;
    bool demo = false;
    bool json = false;
    bool copy = false;
    std::string pngPath = "";
    std::optional<std::int64_t> hoverIndex = std::nullopt;
    int scale = 2;
    bool autoRefreshOn = true;
    std::int64_t intervalSeconds = 0;
    std::string notifications = "";
};

// A case runs the expected invocation when `text` is empty, prints help starting with `text` when it
// starts with "Usage:", and is otherwise a usage error of exactly `text`.
struct Case {
    std::vector<std::string> arguments;
    Expected expected;
    std::string text;
};

TEST(CommandLineTest, EachCommandLineRunsOneThingPrintsHelpOrNamesItsMistake) {
    const std::string x40(40, 'x');
    const Case cases[] = {
        {{}, {}, ""},
        {{"--demo", "status", "--json"}, {.command = CommandName::Status, .demo = true, .json = true}, ""},
        {{"card", "--scale=1", "--hover", "47", "--png=a b.png"},
         {.command = CommandName::Card, .pngPath = "a b.png", .hoverIndex = 47, .scale = 1},
         ""},
        {{"card", "--png", "--hover"}, {.command = CommandName::Card, .pngPath = "--hover"}, ""},
        {{"card", "--scale", "8", "--png", "a"},
         {.command = CommandName::Card, .pngPath = "a", .scale = 8},
         ""},
        {{"--demo", "key", "remove"}, {.command = CommandName::KeyRemove, .demo = true}, ""},
        {{"auto-refresh", "off"}, {.command = CommandName::AutoRefresh, .autoRefreshOn = false}, ""},
        {{"--demo", "notifications", "status"},
         {.command = CommandName::Notifications, .demo = true, .notifications = "status"},
         ""},
        {{"interval", "5", "min"}, {.command = CommandName::Interval, .intervalSeconds = 300}, ""},
        {{"interval", "30 SEC"}, {.command = CommandName::Interval, .intervalSeconds = 30}, ""},
        {{"--hold-clipboard"}, {.command = CommandName::HoldClipboard}, ""},
        // Help comes before every other judgement.
        {{"--help", "nonsense"}, {}, "Usage: quorvane [--demo] [COMMAND [ARGUMENTS]]\n"},
        {{"card", "--scale", "99", "--help"},
         {},
         "Usage: quorvane [--demo] card --png FILE [--hover INDEX] [--scale N]\n"},
        {{"nonsense", "--help"}, {}, "quorvane: unknown command 'nonsense'; see 'quorvane --help'"},
        {{"menu", "--demo"},
         {},
         "quorvane menu: unknown option '--demo' (--demo goes before the command); see 'quorvane menu "
         "--help'"},
        {{"interval", "45"},
         {},
         "quorvane interval: '45' is not one of 30, 60, 300, 900, '30 sec', '1 min', '5 min', '15 min'; see "
         "'quorvane interval --help'"},
        {{"--demo", "--demo"}, {}, "quorvane: --demo given twice; see 'quorvane --help'"},
        {{"--demo", "--hold-clipboard"},
         {},
         "quorvane: unknown option '--hold-clipboard'; see 'quorvane --help'"},
        // An argument is quoted printable, whole characters, at most forty bytes.
        {{"a\tb\nc\x7f"}, {}, "quorvane: unknown command 'a?b?c?'; see 'quorvane --help'"},
        {{"grüß"}, {}, "quorvane: unknown command 'grüß'; see 'quorvane --help'"},
        {{"ab\xC3(\xFF"}, {}, "quorvane: unknown command 'ab?(?'; see 'quorvane --help'"},
        {{std::string(50, 'x')}, {}, "quorvane: unknown command '" + x40 + "...'; see 'quorvane --help'"},
        {{std::string(39, 'x') + "étail"},
         {},
         "quorvane: unknown command '" + x40.substr(1) + "...'; see 'quorvane --help'"},
        {{"status", "--json", "--json"},
         {},
         "quorvane status: --json given twice; see 'quorvane status --help'"},
        {{"status", "--json=yes"},
         {},
         "quorvane status: --json takes no value; see 'quorvane status --help'"},
        {{"menu", "-j"}, {}, "quorvane menu: unexpected argument '-j'; see 'quorvane menu --help'"},
        {{"card", "--png="}, {}, "quorvane card: --png needs a file name; see 'quorvane card --help'"},
        {{"card", "--png"}, {}, "quorvane card: --png needs a value; see 'quorvane card --help'"},
        {{"card", "--hover", "1"}, {}, "quorvane card: --png FILE is required; see 'quorvane card --help'"},
        {{"card", "--png", "a", "--hover", "1.5"},
         {},
         "quorvane card: --hover needs a sample index, a whole number from 0, not '1.5'; see 'quorvane card "
         "--help'"},
        {{"card", "--png", "a", "--hover", "99999999999999999999"},
         {},
         "quorvane card: --hover needs a sample index, a whole number from 0, not '99999999999999999999'; "
         "see "
         "'quorvane card --help'"},
        {{"card", "--png", "a", "--scale", "9"},
         {},
         "quorvane card: --scale needs a whole number from 1 to 8, not '9'; see 'quorvane card --help'"},
        // Nothing typed after "key" is ever quoted: it may be the key.
        {{"key", "sk-abcdef0123456789"},
         {},
         "quorvane key: say 'key set' or 'key remove'; see 'quorvane key --help'"},
        {{"key", "remove", "sk-abcdef0123456789"},
         {},
         "quorvane key remove: takes no arguments; see 'quorvane key remove --help'"},
        {{"key", "set", "--token", "sk-abcdef0123456789"},
         {},
         "quorvane key set: takes no arguments: the key is read from standard input, never from the command "
         "line; "
         "see 'quorvane key set --help'"},
        {{"baseline"}, {}, "quorvane baseline: say 'baseline reset'; see 'quorvane baseline --help'"},
        {{"auto-refresh", "on", "off"},
         {},
         "quorvane auto-refresh: takes one argument, 'on' or 'off'; see 'quorvane auto-refresh --help'"},
        {{"auto-refresh", "maybe"},
         {},
         "quorvane auto-refresh: say 'on' or 'off'; see 'quorvane auto-refresh --help'"},
        {{"notifications", "on", "off"},
         {},
         "quorvane notifications: takes one argument, 'on', 'off' or 'status'; see 'quorvane notifications "
         "--help'"},
        {{"notifications", "On"},
         {},
         "quorvane notifications: say 'on', 'off' or 'status'; see 'quorvane notifications --help'"},
        {{"interval"},
         {},
         "quorvane interval: say one of 30, 60, 300, 900, '30 sec', '1 min', '5 min', '15 min'; see "
         "'quorvane "
         "interval --help'"},
    };
    const auto fields = [](const auto& i) {
        return std::tuple(i.command, i.demo, i.json, i.copy, i.pngPath, i.hoverIndex, i.scale,
                          i.autoRefreshOn, i.intervalSeconds, i.notifications);
    };
    for (const Case& c : cases) {
        const ParsedCommandLine parsed = CommandLine::parse(c.arguments);
        const Invocation& got = parsed.invocation;
        SCOPED_TRACE(c.arguments.empty() ? "(nothing)" : c.arguments.front() + " ...: " + c.text);

        if (c.text.empty()) {
            ASSERT_EQ(parsed.outcome, Outcome::Run) << parsed.text;
            EXPECT_TRUE(fields(got) == fields(c.expected));
        } else if (c.text.starts_with("Usage:")) {
            EXPECT_EQ(parsed.outcome, Outcome::Help);
            EXPECT_EQ(parsed.text.substr(0, c.text.size()), c.text);
        } else {
            EXPECT_EQ(parsed.outcome, Outcome::UsageError);
            EXPECT_EQ(parsed.text, c.text);
        }
    }
}

} // namespace
} // namespace quorvane
