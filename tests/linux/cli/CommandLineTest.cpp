// Reading the arguments: what each command line asks for, and the one-line answer to each mistake.
#include "cli/CommandLine.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quorvane {
namespace {

using Args = std::vector<std::string>;

struct RunCase {
    const char* name;
    Args arguments;
    Invocation expected;
};

void PrintTo(const RunCase& c, std::ostream* os) {
    *os << c.name;
}

Invocation invocation(CommandName command, bool demo = false) {
    Invocation result;
    result.command = command;
    result.demo = demo;
    return result;
}

Invocation with(Invocation base, void (*change)(Invocation&)) {
    change(base);
    return base;
}

class CommandLineRunTest : public ::testing::TestWithParam<RunCase> {};

TEST_P(CommandLineRunTest, EachCommandLineAsksForOneThing) {
    const ParsedCommandLine parsed = CommandLine::parse(GetParam().arguments);
    const Invocation& expected = GetParam().expected;

    ASSERT_EQ(parsed.outcome, ParsedCommandLine::Outcome::Run) << parsed.text;
    const Invocation& got = parsed.invocation;
    EXPECT_EQ(got.command, expected.command);
    EXPECT_EQ(got.demo, expected.demo);
    EXPECT_EQ(got.json, expected.json);
    EXPECT_EQ(got.copy, expected.copy);
    EXPECT_EQ(got.pngPath, expected.pngPath);
    EXPECT_EQ(got.hoverIndex, expected.hoverIndex);
    EXPECT_EQ(got.scale, expected.scale);
    EXPECT_EQ(got.autoRefreshOn, expected.autoRefreshOn);
    EXPECT_EQ(got.intervalSeconds, expected.intervalSeconds);
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, CommandLineRunTest,
    ::testing::Values(
        RunCase{"Nothing", {}, invocation(CommandName::DesktopApp)},
        RunCase{"DemoApp", {"--demo"}, invocation(CommandName::DesktopApp, true)},
        RunCase{"Status", {"status"}, invocation(CommandName::Status)},
        RunCase{"DemoStatusJson",
                {"--demo", "status", "--json"},
                with(invocation(CommandName::Status, true), [](Invocation& i) { i.json = true; })},
        RunCase{"MenuJson",
                {"menu", "--json"},
                with(invocation(CommandName::Menu), [](Invocation& i) { i.json = true; })},
        RunCase{"SummaryCopy",
                {"summary", "--copy"},
                with(invocation(CommandName::Summary), [](Invocation& i) { i.copy = true; })},
        RunCase{"CardDefaults",
                {"card", "--png", "out.png"},
                with(invocation(CommandName::Card), [](Invocation& i) { i.pngPath = "out.png"; })},
        RunCase{"CardEverything",
                {"card", "--scale=1", "--hover", "47", "--png=a b.png"},
                with(invocation(CommandName::Card),
                     [](Invocation& i) {
                         i.pngPath = "a b.png";
                         i.hoverIndex = 47;
                         i.scale = 1;
                     })},
        RunCase{"CardPngLooksLikeAnOption",
                {"card", "--png", "--hover"},
                with(invocation(CommandName::Card), [](Invocation& i) { i.pngPath = "--hover"; })},
        RunCase{"KeySet", {"key", "set"}, invocation(CommandName::KeySet)},
        RunCase{"KeyRemove", {"--demo", "key", "remove"}, invocation(CommandName::KeyRemove, true)},
        RunCase{"BaselineReset", {"baseline", "reset"}, invocation(CommandName::BaselineReset)},
        RunCase{"HistoryClear", {"history", "clear"}, invocation(CommandName::HistoryClear)},
        RunCase{"AutoRefreshOff",
                {"auto-refresh", "off"},
                with(invocation(CommandName::AutoRefresh), [](Invocation& i) { i.autoRefreshOn = false; })},
        RunCase{"AutoRefreshOn", {"auto-refresh", "on"}, invocation(CommandName::AutoRefresh)},
        RunCase{"IntervalSeconds",
                {"interval", "900"},
                with(invocation(CommandName::Interval), [](Invocation& i) { i.intervalSeconds = 900; })},
        RunCase{"IntervalLabelInTwoWords",
                {"interval", "5", "min"},
                with(invocation(CommandName::Interval), [](Invocation& i) { i.intervalSeconds = 300; })},
        RunCase{"IntervalLabelInAnyCase",
                {"interval", "30 SEC"},
                with(invocation(CommandName::Interval), [](Invocation& i) { i.intervalSeconds = 30; })},
        RunCase{"HoldClipboard", {"--hold-clipboard"}, invocation(CommandName::HoldClipboard)}),
    [](const auto& test) { return std::string(test.param.name); });

struct MistakeCase {
    const char* name;
    Args arguments;
    std::string message;
};

void PrintTo(const MistakeCase& c, std::ostream* os) {
    *os << c.name;
}

class CommandLineMistakeTest : public ::testing::TestWithParam<MistakeCase> {};

TEST_P(CommandLineMistakeTest, AMistakeIsOneLineNamingIt) {
    const ParsedCommandLine parsed = CommandLine::parse(GetParam().arguments);

    EXPECT_EQ(parsed.outcome, ParsedCommandLine::Outcome::UsageError);
    EXPECT_EQ(parsed.text, GetParam().message);
    EXPECT_EQ(parsed.text.find('\n'), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    Mistakes, CommandLineMistakeTest,
    ::testing::Values(
        MistakeCase{"DemoTwice", {"--demo", "--demo"}, "quorvane: --demo given twice; see 'quorvane --help'"},
        MistakeCase{"HoldClipboardIsNotAnOption",
                    {"--demo", "--hold-clipboard"},
                    "quorvane: unknown option '--hold-clipboard'; see 'quorvane --help'"},
        MistakeCase{"EmptyCommand", {""}, "quorvane: unknown command ''; see 'quorvane --help'"},
        MistakeCase{"JsonTwice",
                    {"status", "--json", "--json"},
                    "quorvane status: --json given twice; see 'quorvane status --help'"},
        MistakeCase{"CopyOnStatus",
                    {"status", "--copy"},
                    "quorvane status: unknown option '--copy'; see 'quorvane status --help'"},
        MistakeCase{"ShortOption",
                    {"menu", "-j"},
                    "quorvane menu: unexpected argument '-j'; see 'quorvane menu --help'"},
        MistakeCase{"EmptyPng",
                    {"card", "--png="},
                    "quorvane card: --png needs a file name; see 'quorvane card --help'"},
        MistakeCase{"HoverWithoutPng",
                    {"card", "--hover", "1"},
                    "quorvane card: --png FILE is required; see 'quorvane card --help'"},
        MistakeCase{"PngTwice",
                    {"card", "--png", "a", "--png=b"},
                    "quorvane card: --png given twice; see 'quorvane card --help'"},
        MistakeCase{
            "FractionalHover",
            {"card", "--png", "a", "--hover", "1.5"},
            "quorvane card: --hover needs a sample index, a whole number from 0, not '1.5'; see 'quorvane "
            "card --help'"},
        MistakeCase{"HugeHover",
                    {"card", "--png", "a", "--hover", "99999999999999999999"},
                    "quorvane card: --hover needs a sample index, a whole number from 0, not "
                    "'99999999999999999999'; see 'quorvane card --help'"},
        MistakeCase{
            "ScaleZero",
            {"card", "--png", "a", "--scale", "0"},
            "quorvane card: --scale needs a whole number from 1 to 8, not '0'; see 'quorvane card --help'"},
        MistakeCase{"KeyTypo",
                    {"key", "sk-abcdef0123456789"},
                    "quorvane key: say 'key set' or 'key remove'; see 'quorvane key --help'"},
        MistakeCase{"KeyRemoveExtra",
                    {"key", "remove", "now"},
                    "quorvane key remove: takes no arguments; see 'quorvane key remove --help'"},
        MistakeCase{"HistoryExtra",
                    {"history", "clear", "all"},
                    "quorvane history clear: unexpected argument 'all'; see 'quorvane history clear --help'"},
        MistakeCase{
            "AutoRefreshTwoWords",
            {"auto-refresh", "on", "off"},
            "quorvane auto-refresh: takes one argument, 'on' or 'off'; see 'quorvane auto-refresh --help'"},
        MistakeCase{
            "IntervalMissing",
            {"interval"},
            "quorvane interval: say one of 30, 60, 300, 900, '30 sec', '1 min', '5 min', '15 min'; see "
            "'quorvane interval --help'"},
        MistakeCase{
            "IntervalInMinutes",
            {"interval", "5"},
            "quorvane interval: '5' is not one of 30, 60, 300, 900, '30 sec', '1 min', '5 min', '15 min'; "
            "see 'quorvane interval --help'"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(CommandLineTest, NothingTypedAfterKeyIsEverQuoted) {
    const std::string key = "sk-abcdef0123456789";
    for (const Args& arguments : {Args{"key", key}, Args{"key", "set", key}, Args{"key", "remove", key},
                                  Args{"key", "set", "--token", key}}) {
        const ParsedCommandLine parsed = CommandLine::parse(arguments);
        EXPECT_EQ(parsed.outcome, ParsedCommandLine::Outcome::UsageError);
        EXPECT_EQ(parsed.text.find("abcdef"), std::string::npos) << parsed.text;
    }
}

TEST(CommandLineTest, HelpComesBeforeEveryOtherJudgement) {
    const ParsedCommandLine overview = CommandLine::parse({"--help", "nonsense"});
    const ParsedCommandLine demoOverview = CommandLine::parse({"--demo", "-h"});
    const ParsedCommandLine card = CommandLine::parse({"card", "--scale", "99", "--help"});
    const ParsedCommandLine interval = CommandLine::parse({"interval", "-h"});
    const ParsedCommandLine unknown = CommandLine::parse({"nonsense", "--help"});

    EXPECT_EQ(overview.outcome, ParsedCommandLine::Outcome::Help);
    EXPECT_EQ(overview.text.rfind("Usage: quorvane [--demo] [COMMAND [ARGUMENTS]]\n", 0), 0u);
    EXPECT_EQ(demoOverview.text, overview.text);
    EXPECT_EQ(card.outcome, ParsedCommandLine::Outcome::Help);
    EXPECT_EQ(card.text.rfind("Usage: quorvane [--demo] card --png FILE [--hover INDEX] [--scale N]\n", 0),
              0u);
    EXPECT_EQ(
        interval.text.rfind("Usage: quorvane [--demo] interval 30|60|300|900 (or \"30 sec\", \"1 min\", "
                            "\"5 min\", \"15 min\")\n",
                            0),
        0u);
    EXPECT_EQ(unknown.outcome, ParsedCommandLine::Outcome::UsageError);
}

struct QuoteCase {
    const char* name;
    std::string argument;
    std::string quoted;
};

void PrintTo(const QuoteCase& c, std::ostream* os) {
    *os << c.name;
}

class CommandLineQuoteTest : public ::testing::TestWithParam<QuoteCase> {};

TEST_P(CommandLineQuoteTest, AQuotedArgumentIsPrintableAndShort) {
    EXPECT_EQ(CommandLine::quoted(GetParam().argument), GetParam().quoted);
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, CommandLineQuoteTest,
    ::testing::Values(QuoteCase{"Plain", "status", "'status'"},
                      QuoteCase{"ControlCharacters", "a\tb\nc\x7f", "'a?b?c?'"},
                      QuoteCase{"Utf8Kept", "gr\xC3\xBC\xC3\x9F", "'gr\xC3\xBC\xC3\x9F'"},
                      QuoteCase{"BrokenUtf8", "ab\xC3(\xFF", "'ab?(?'"},
                      QuoteCase{"LongCutAfterForty", std::string(50, 'x'),
                                "'" + std::string(40, 'x') + "...'"},
                      // 39 ASCII bytes, then a two-byte character across the 40th byte.
                      QuoteCase{"CutBeforeACharacter", std::string(39, 'x') + "\xC3\xA9" + "tail",
                                "'" + std::string(39, 'x') + "...'"}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace quorvane
