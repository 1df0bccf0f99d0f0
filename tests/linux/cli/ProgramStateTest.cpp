// What the command line keeps between runs: the history behind the chart and the auto-refresh settings.
#include "ProgramHarness.h"
#include "platform/Defaults.h"
#include "platform/QtSettingsStore.h"
#include "tracking/BalanceHistory.h"
#include "tracking/HistoryCodec.h"

#include <QDateTime>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

const std::string kWhale = "\xF0\x9F\x90\x8B";

std::size_t occurrences(const std::string& text, const std::string& piece) {
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) {
        ++count;
    }
    return count;
}

class ProgramStateTest : public ::testing::Test {
protected:
    ProgramHarness program;

    // Samples 100, 101, ... in USD, one a minute up to a minute ago, written
    // where the program keeps its history.
    void storeHistory(int samples) {
        const double now = static_cast<double>(QDateTime::currentSecsSinceEpoch());
        std::vector<BalancePoint> points;
        for (int i = 0; i < samples; ++i) {
            points.push_back({Timestamp::fromUnixSeconds(now - (samples - i) * 60.0), "USD",
                              Decimal::fromInteger(100 + i)});
        }
        QtSettingsStore store(program.settingsFile());
        Defaults(store).setData(std::string(BalanceHistory::kHistoryKey), HistoryCodec::encode(points));
    }
};

TEST_F(ProgramStateTest, TheChartShowsTheNewestFortyEightSamples) {
    program.answerBalances({{"USD", "50.00"}});
    program.saveKey();
    storeHistory(60);

    const ProgramHarness::Result json = program.run({"menu", "--json"});
    const ProgramHarness::Result text = program.run({"menu"});

    EXPECT_EQ(occurrences(json.out, R"("currency":"USD")"), 48u);
    const std::size_t points = json.out.find(R"("points":[)");
    ASSERT_NE(points, std::string::npos) << json.out;
    const std::string oldest = R"("balance":"113")";
    EXPECT_EQ(json.out.substr(json.out.find(R"("balance":")", points), oldest.size()), oldest)
        << "the oldest shown is the 14th stored: 60 stored and one new, 48 kept";
    EXPECT_NE(json.out.find(R"("currency":"USD","balance":"50"}]})"), std::string::npos)
        << "the newest is this run's reading, exact";
    EXPECT_NE(text.out.find("  [chart 48 points]\n"), std::string::npos) << text.out;
}

TEST_F(ProgramStateTest, ClearingTheHistoryEmptiesTheChartUntilNewReadings) {
    program.answerBalances({{"USD", "50.00"}});
    program.saveKey();
    storeHistory(10);

    const ProgramHarness::Result cleared = program.run({"history", "clear"});
    const qsizetype requests = program.requestCount();
    const ProgramHarness::Result first = program.run({"menu"});
    const ProgramHarness::Result second = program.run({"menu"});

    EXPECT_EQ(cleared.exitCode, 0);
    EXPECT_EQ(cleared.out, "Usage history cleared.\n");
    EXPECT_EQ(program.requestCount(), requests + 2) << "clearing refreshes nothing";
    EXPECT_NE(first.out.find("  [chart 1 points]\n"), std::string::npos) << first.out;
    EXPECT_NE(second.out.find("  [chart 2 points]\n"), std::string::npos) << second.out;
}

TEST_F(ProgramStateTest, IntervalAndAutoRefreshSurviveBetweenRuns) {
    program.answerBalances({{"USD", "50.00"}});
    program.saveKey();

    const ProgramHarness::Result interval = program.run({"interval", "300"});
    const ProgramHarness::Result off = program.run({"auto-refresh", "off"});
    const ProgramHarness::Result offAgain = program.run({"auto-refresh", "off"});
    const ProgramHarness::Result menu = program.run({"menu"});

    EXPECT_EQ(interval.out, "Refresh interval: 5 min\n");
    EXPECT_EQ(off.out, "Auto-refresh: off\n");
    EXPECT_EQ(offAgain.out, "Auto-refresh: off\n") << "asking for the current state changes nothing";
    EXPECT_NE(menu.out.find("\xE2\x8F\xB8 Auto-refresh: off\nDetails >\n"), std::string::npos) << menu.out;
    EXPECT_NE(menu.out.find("  Updated 0 sec. ago \xE2\x80\xA2 5 min auto-refresh\n"), std::string::npos);
    EXPECT_NE(menu.out.find("Settings >\n"
                            "  \xE2\x8F\xB8 Auto-refresh: Off\n"
                            "  Refresh Interval: 5 min >\n"
                            "      30 sec\n"
                            "      1 min\n"
                            "    \xE2\x9C\x93 5 min\n"
                            "      15 min\n"),
              std::string::npos)
        << menu.out;

    const ProgramHarness::Result label = program.run({"interval", "15", "min"});
    const ProgramHarness::Result on = program.run({"auto-refresh", "on"});
    const ProgramHarness::Result quoted = program.run({"interval", "30 sec"});
    EXPECT_EQ(label.out, "Refresh interval: 15 min (auto-refresh is off)\n");
    EXPECT_EQ(on.out, "Auto-refresh: on, every 15 min\n");
    EXPECT_EQ(quoted.out, "Refresh interval: 30 sec\n");
    EXPECT_NE(program.run({"menu"}).out.find("\xE2\x8F\xB1 Auto-refresh: every 30 sec\n"), std::string::npos);
}

TEST_F(ProgramStateTest, SettingsCommandsSendNoRequest) {
    program.answerBalances({{"USD", "50.00"}});
    program.saveKey();
    const qsizetype requests = program.requestCount();

    program.run({"interval", "60"});
    program.run({"auto-refresh", "off"});
    program.run({"history", "clear"});
    program.run({"key", "remove"});

    EXPECT_EQ(program.requestCount(), requests);
}

} // namespace
} // namespace quorvane
