// What the command line shows for each answer of the balance endpoint, and the spend it derives.
#include "ProgramHarness.h"
#include "fakes/BalanceBody.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quorvane {
namespace {

const std::string kWhale = "\xF0\x9F\x90\x8B";
const std::string kWarning = "\xE2\x9A\xA0\xEF\xB8\x8F";

struct AnswerCase {
    const char* name;
    int status;
    std::string body;
    std::string title;
    std::string className;
};

void PrintTo(const AnswerCase& c, std::ostream* os) {
    *os << c.name;
}

class ProgramAnswerTest : public ::testing::TestWithParam<AnswerCase> {
protected:
    ProgramHarness program;
};

TEST_P(ProgramAnswerTest, TheTitleAndTheStatusClassFollowTheAnswer) {
    const AnswerCase& c = GetParam();
    program.answer(c.status, QByteArray::fromStdString(c.body));

    const ProgramHarness::Result saved =
        program.run({"key", "set"}, QByteArray::fromStdString(ProgramHarness::kKey));
    const ProgramHarness::Result status = program.run({"status"});
    const ProgramHarness::Result json = program.run({"status", "--json"});

    EXPECT_EQ(saved.out, c.title + "\n");
    EXPECT_EQ(status.out, c.title + "\n");
    EXPECT_EQ(status.exitCode, 0) << "a failed refresh is shown, not a failed command";
    EXPECT_EQ(status.err, "");
    EXPECT_NE(json.out.find("\"class\":\"" + c.className + "\"}\n"), std::string::npos) << json.out;
    EXPECT_EQ(json.out.rfind("{\"text\":\"" + c.title + "\",\"tooltip\":\"Quorvane", 0), 0u) << json.out;
}

INSTANTIATE_TEST_SUITE_P(
    Answers, ProgramAnswerTest,
    ::testing::Values(
        AnswerCase{"Healthy", 200, balanceBody({{"USD", "110.00"}}),
                   kWhale + " $\xC2\xA0"
                            "110.00",
                   "ok"},
        AnswerCase{"TwoDecimalsAtMost", 200, balanceBody({{"USD", "12.3456"}}),
                   kWhale + " $\xC2\xA0"
                            "12.35",
                   "ok"},
        AnswerCase{"UsdAtItsThreshold", 200, balanceBody({{"USD", "1.00"}}),
                   kWarning + " $\xC2\xA0"
                              "1.00",
                   "low"},
        AnswerCase{"UsdJustAbove", 200, balanceBody({{"USD", "1.01"}}),
                   kWhale + " $\xC2\xA0"
                            "1.01",
                   "ok"},
        AnswerCase{"CnyAtItsThreshold", 200, balanceBody({{"CNY", "10"}}),
                   kWarning + " CN\xC2\xA5\xC2\xA0"
                              "10.00",
                   "low"},
        AnswerCase{"UsdPreferredOverAnEarlierCny", 200, balanceBody({{"CNY", "5"}, {"USD", "3"}}),
                   kWhale + " $\xC2\xA0"
                            "3.00",
                   "ok"},
        AnswerCase{"UnreadableAmount", 200, balanceBody({{"USD", "n/a"}}),
                   kWarning + " $\xC2\xA0"
                              "0.00",
                   "low"},
        AnswerCase{"NoEntries", 200, balanceBody({}), kWhale + " 0", "ok"},
        AnswerCase{"Unavailable", 200, balanceBody({{"USD", "25"}}, false),
                   kWhale + " $\xC2\xA0"
                            "25.00",
                   "ok"},
        AnswerCase{"Unauthorized", 401, R"({"error":{"message":"Authentication Fails"}})", kWhale + " !",
                   "error"},
        AnswerCase{"NotJson", 200, "<html>maintenance</html>", kWhale + " !", "error"},
        AnswerCase{"AmountAsNumber", 200,
                   R"({"is_available":true,"balance_infos":[{"currency":"USD","total_balance":1,)"
                   R"("granted_balance":"0","topped_up_balance":"1"}]})",
                   kWhale + " !", "error"}),
    [](const auto& test) { return std::string(test.param.name); });

struct ErrorLineCase {
    const char* name;
    int status;
    QByteArray body;
    std::string error;
};

void PrintTo(const ErrorLineCase& c, std::ostream* os) {
    *os << c.name;
}

class ProgramErrorLineTest : public ::testing::TestWithParam<ErrorLineCase> {
protected:
    ProgramHarness program;
};

TEST_P(ProgramErrorLineTest, TheErrorLineQuotesTheBodysFirstEightyCharacters) {
    const ErrorLineCase& c = GetParam();
    program.answer(c.status, c.body);
    program.saveKey();

    const ProgramHarness::Result summary = program.run({"summary"});
    const ProgramHarness::Result menu = program.run({"menu"});

    EXPECT_EQ(summary.out, "Quorvane error: " + c.error + "\n");
    EXPECT_NE(menu.out.find("[card status]\n  " + kWhale + " Quorvane\n  Could not refresh balance\n  " +
                            kWarning + " " + c.error + "\n---\n"),
              std::string::npos)
        << menu.out;
}

QByteArray repeated(const QByteArray& piece, int count) {
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    Bodies, ProgramErrorLineTest,
    ::testing::Values(ErrorLineCase{"LongAscii", 401, repeated("0123456789", 20),
                                    "HTTP 401 " + repeated("0123456789", 8).toStdString()},
                      ErrorLineCase{"ShortBody", 429, "slow down", "HTTP 429 slow down"},
                      ErrorLineCase{"EmptyBody", 502, "", "HTTP 502 "},
                      ErrorLineCase{"NotUtf8", 500, "\xFF\xFE" + repeated("x", 100), "HTTP 500 "},
                      ErrorLineCase{"CharactersNotBytes", 503, repeated("\xC3\xA9", 100),
                                    "HTTP 503 " + repeated("\xC3\xA9", 80).toStdString()},
                      ErrorLineCase{"Status300", 300, "moved", "HTTP 300 moved"}),
    [](const auto& test) { return std::string(test.param.name); });

class ProgramBalanceTest : public ::testing::Test {
protected:
    ProgramHarness program;
};

TEST_F(ProgramBalanceTest, TwoCurrenciesAreBothSummarisedAndDetailed) {
    program.answerBalances({{"USD", "110.00"}, {"CNY", "20.5"}});
    program.saveKey();

    const ProgramHarness::Result summary = program.run({"summary"});
    const ProgramHarness::Result menu = program.run({"menu"});

    EXPECT_EQ(withoutTimes(summary.out), "Quorvane\n"
                                         "Updated: <time>\n"
                                         "USD remaining: $\xC2\xA0"
                                         "110.00\n"
                                         "USD today spent: $\xC2\xA0"
                                         "0.00\n"
                                         "USD since baseline: $\xC2\xA0"
                                         "0.00\n"
                                         "CNY remaining: CN\xC2\xA5\xC2\xA0"
                                         "20.50\n"
                                         "CNY today spent: CN\xC2\xA5\xC2\xA0"
                                         "0.00\n"
                                         "CNY since baseline: CN\xC2\xA5\xC2\xA0"
                                         "0.00\n");
    EXPECT_NE(menu.out.find("Details >\n"
                            "  Remaining: $\xC2\xA0"
                            "110.00\n"
                            "  Granted: $\xC2\xA0"
                            "0.00\n"
                            "  Topped up: $\xC2\xA0"
                            "110.00\n"
                            "  Today spent: $\xC2\xA0"
                            "0.00\n"
                            "  Since baseline: $\xC2\xA0"
                            "0.00\n"
                            "  \xF0\x9F\x9F\xA2 Balance looks healthy\n"
                            "  ---\n"
                            "  Remaining: CN\xC2\xA5\xC2\xA0"
                            "20.50\n"
                            "  Granted: CN\xC2\xA5\xC2\xA0"
                            "0.00\n"
                            "  Topped up: CN\xC2\xA5\xC2\xA0"
                            "20.50\n"
                            "  Today spent: CN\xC2\xA5\xC2\xA0"
                            "0.00\n"
                            "  Since baseline: CN\xC2\xA5\xC2\xA0"
                            "0.00\n"
                            "  \xF0\x9F\x9F\xA2 Balance looks healthy\n"
                            "  ---\n"
                            "  API status: ready\n"
                            "  Updated: 0 sec. ago\n"),
              std::string::npos)
        << menu.out;
}

TEST_F(ProgramBalanceTest, AnEmptyListShowsNoBalanceAndAShortDetailsMenu) {
    program.answerBalances({});
    program.saveKey();

    const ProgramHarness::Result menu = program.run({"menu"});
    const ProgramHarness::Result summary = program.run({"summary"});

    const std::string top = kWhale +
                            " 0\n"
                            "[card dashboard]\n"
                            "  " +
                            kWhale +
                            " Quorvane\n"
                            "  No balance\n"
                            "  Today -\n"
                            "  Ready\n"
                            "  [chart 0 points]\n"
                            "  Updated 0 sec. ago \xE2\x80\xA2 1 min auto-refresh\n"
                            "---\n"
                            "No balance returned\n"
                            "Details >\n"
                            "  API status: ready\n"
                            "  Updated: 0 sec. ago\n"
                            "---\n"
                            "\xF0\x9F\x94\x84 Refresh Now  (r)\n";
    EXPECT_EQ(menu.out.substr(0, top.size()), top);
    EXPECT_EQ(withoutTimes(summary.out), "Quorvane\nUpdated: <time>\n");
}

TEST_F(ProgramBalanceTest, AnUnavailableAccountSaysSoInRed) {
    program.answerBalances({{"USD", "25"}}, false);
    program.saveKey();

    const ProgramHarness::Result menu = program.run({"menu"});
    const ProgramHarness::Result json = program.run({"menu", "--json"});

    EXPECT_NE(menu.out.find("  $\xC2\xA0"
                            "25.00\n  Today $\xC2\xA0"
                            "0.00\n  No balance\n"),
              std::string::npos)
        << menu.out;
    EXPECT_NE(menu.out.find("  API status: no balance\n"), std::string::npos) << menu.out;
    EXPECT_NE(json.out.find(R"({"text":"No balance","frame":[178,131,130,18],"fontSize":12,)"
                            R"("fontWeight":"semibold","color":"systemRed","alignment":"right"})"),
              std::string::npos)
        << json.out;
    EXPECT_NE(json.out.find(R"("accentColor":"systemTeal")"), std::string::npos) << "25 is a healthy balance";
}

// Spend is the stored baseline minus the current balance: a lower second
// reading shows it, and a reset starts counting again from the next reading.
TEST_F(ProgramBalanceTest, ALowerBalanceIsSpendUntilTheBaselineIsReset) {
    program.answerBalances({{"USD", "110.00"}});
    program.saveKey();

    program.answerBalances({{"USD", "107.25"}});
    const ProgramHarness::Result spent = program.run({"menu"});
    const ProgramHarness::Result reset = program.run({"baseline", "reset"});
    program.answerBalances({{"USD", "106.00"}});
    const ProgramHarness::Result after = program.run({"menu"});
    const ProgramHarness::Result summary = program.run({"summary"});

    EXPECT_NE(spent.out.find("  $\xC2\xA0"
                             "107.25\n  Today $\xC2\xA0"
                             "2.75\n"),
              std::string::npos)
        << spent.out;
    EXPECT_NE(spent.out.find("\nToday: $\xC2\xA0"
                             "2.75\nBaseline: $\xC2\xA0"
                             "2.75\n"),
              std::string::npos)
        << spent.out;
    EXPECT_EQ(reset.exitCode, 0);
    EXPECT_EQ(reset.out, kWhale + " $\xC2\xA0"
                                  "107.25\n");
    EXPECT_NE(after.out.find("\nToday: $\xC2\xA0"
                             "1.25\nBaseline: $\xC2\xA0"
                             "1.25\n"),
              std::string::npos)
        << after.out;
    EXPECT_EQ(withoutTimes(summary.out), "Quorvane\n"
                                         "Updated: <time>\n"
                                         "USD remaining: $\xC2\xA0"
                                         "106.00\n"
                                         "USD today spent: $\xC2\xA0"
                                         "1.25\n"
                                         "USD since baseline: $\xC2\xA0"
                                         "1.25\n");
}

TEST_F(ProgramBalanceTest, ATopUpShowsNoSpendAndKeepsTheBaseline) {
    program.answerBalances({{"USD", "10.00"}});
    program.saveKey();
    program.answerBalances({{"USD", "30.00"}});
    program.run({"status"});
    program.answerBalances({{"USD", "9.50"}});

    const ProgramHarness::Result menu = program.run({"menu"});

    EXPECT_NE(menu.out.find("\nToday: $\xC2\xA0"
                            "0.50\nBaseline: $\xC2\xA0"
                            "0.50\n"),
              std::string::npos)
        << menu.out;
}

} // namespace
} // namespace quorvane
