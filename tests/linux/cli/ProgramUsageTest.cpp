// How the command line answers what it cannot do: usage errors, help, and an environment it cannot work in.
#include "ProgramHarness.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quorvane {
namespace {

struct UsageCase {
    const char* name;
    QStringList arguments;
    std::string error;
};

void PrintTo(const UsageCase& c, std::ostream* os) {
    *os << c.name;
}

class ProgramUsageTest : public ::testing::TestWithParam<UsageCase> {
protected:
    ProgramHarness program;
};

// One line on standard error, nothing on standard output, status 2, and
// nothing started: no request, no file.
TEST_P(ProgramUsageTest, AMistakeIsOneLineAndStatusTwo) {
    program.answerBalances({{"USD", "110.00"}});

    const ProgramHarness::Result result = program.run(GetParam().arguments);

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, GetParam().error + "\n");
    EXPECT_EQ(program.requestCount(), 0);
    EXPECT_EQ(program.filesUnderHome(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    Mistakes, ProgramUsageTest,
    ::testing::Values(
        UsageCase{
            "UnknownCommand", {"balance"}, "quorvane: unknown command 'balance'; see 'quorvane --help'"},
        UsageCase{"UnknownOption",
                  {"--verbose", "status"},
                  "quorvane: unknown option '--verbose'; see 'quorvane --help'"},
        UsageCase{"UnknownCommandOption",
                  {"status", "--xml"},
                  "quorvane status: unknown option '--xml'; see 'quorvane status --help'"},
        UsageCase{"DemoAfterTheCommand",
                  {"menu", "--demo"},
                  "quorvane menu: unknown option '--demo' (--demo goes before the command); see 'quorvane "
                  "menu --help'"},
        UsageCase{"ExtraArgument",
                  {"summary", "now"},
                  "quorvane summary: unexpected argument 'now'; see 'quorvane summary --help'"},
        UsageCase{"FlagWithAValue",
                  {"status", "--json=yes"},
                  "quorvane status: --json takes no value; see 'quorvane status --help'"},
        UsageCase{
            "CardWithoutFile", {"card"}, "quorvane card: --png FILE is required; see 'quorvane card --help'"},
        UsageCase{"CardWithoutValue",
                  {"card", "--png"},
                  "quorvane card: --png needs a value; see 'quorvane card --help'"},
        UsageCase{"NegativeHover",
                  {"card", "--png", "x.png", "--hover", "-1"},
                  "quorvane card: --hover needs a sample index, a whole number from 0, not '-1'; see "
                  "'quorvane card "
                  "--help'"},
        UsageCase{
            "ScaleTooLarge",
            {"card", "--png", "x.png", "--scale", "9"},
            "quorvane card: --scale needs a whole number from 1 to 8, not '9'; see 'quorvane card --help'"},
        UsageCase{"KeyWithoutAction",
                  {"key"},
                  "quorvane key: say 'key set' or 'key remove'; see 'quorvane key --help'"},
        UsageCase{
            "OddInterval",
            {"interval", "45"},
            "quorvane interval: '45' is not one of 30, 60, 300, 900, '30 sec', '1 min', '5 min', '15 min'; "
            "see 'quorvane interval --help'"},
        UsageCase{"AutoRefreshMaybe",
                  {"auto-refresh", "maybe"},
                  "quorvane auto-refresh: say 'on' or 'off'; see 'quorvane auto-refresh --help'"},
        UsageCase{"BaselineWithoutReset",
                  {"baseline"},
                  "quorvane baseline: say 'baseline reset'; see 'quorvane baseline --help'"},
        UsageCase{"ControlCharacters",
                  {"st\natus\x1b[2J"},
                  "quorvane: unknown command 'st?atus?[2J'; see 'quorvane --help'"}),
    [](const auto& test) { return std::string(test.param.name); });

class ProgramHelpTest : public ::testing::Test {
protected:
    ProgramHarness program;
};

TEST_F(ProgramHelpTest, HelpIsPrintedOnStandardOutputAndChangesNothing) {
    const ProgramHarness::Result overview = program.run({"--help"});
    const ProgramHarness::Result status = program.run({"status", "--help"});
    const ProgramHarness::Result key = program.run({"--demo", "key", "set", "-h"});

    EXPECT_EQ(overview.exitCode, 0);
    EXPECT_EQ(overview.out.rfind("Usage: quorvane [--demo] [COMMAND [ARGUMENTS]]\n", 0), 0u);
    EXPECT_EQ(overview.err, "");
    EXPECT_EQ(status.exitCode, 0);
    EXPECT_EQ(status.out.rfind("Usage: quorvane [--demo] status [--json]\n", 0), 0u);
    EXPECT_EQ(key.out.rfind("Usage: quorvane [--demo] key set\n", 0), 0u);
    EXPECT_EQ(program.requestCount(), 0);
    EXPECT_EQ(program.filesUnderHome(), QStringList());
}

TEST_F(ProgramHelpTest, AnUnusableServerAddressIsRefusedWithoutRepeatingIt) {
    for (const char* address : {"ftp://private.example/", "not an address", "http://user:pw@private.example",
                                "https://private.example/?q=1"}) {
        program.environment().insert("QUORVANE_API_BASE_URL", address);

        const ProgramHarness::Result refused = program.run({"status"});

        EXPECT_EQ(refused.exitCode, 1) << address;
        EXPECT_EQ(refused.out, "");
        EXPECT_EQ(refused.err,
                  "quorvane: QUORVANE_API_BASE_URL is not an http:// or https:// address of a server; "
                  "unset it to use the DeepSeek API\n");
    }
}

TEST_F(ProgramHelpTest, TheDesktopAppWithoutADisplaySaysSo) {
    program.environment().remove("QT_QPA_PLATFORM");

    const ProgramHarness::Result refused = program.run({});

    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.err,
              "quorvane: no display (neither DISPLAY nor WAYLAND_DISPLAY is set) for the desktop app; "
              "'quorvane status' and the other commands work without one\n");
}

TEST_F(ProgramHelpTest, AServerThatIsNotThereIsAFailedRefreshNotAFailedCommand) {
    program.answerBalances({{"USD", "110.00"}});
    program.saveKey();
    program.environment().insert("QUORVANE_API_BASE_URL", "http://127.0.0.1:1");

    const ProgramHarness::Result status = program.run({"status"});
    const ProgramHarness::Result summary = program.run({"summary"});

    EXPECT_EQ(status.exitCode, 0);
    EXPECT_EQ(status.out, "\xF0\x9F\x90\x8B !\n");
    EXPECT_EQ(summary.out.rfind("Quorvane error: ", 0), 0u) << summary.out;
}

} // namespace
} // namespace quorvane
