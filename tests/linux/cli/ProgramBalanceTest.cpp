// The spend the command line derives from readings, and what it keeps between runs.
#include "ProgramHarness.h"
#include "fakes/BalanceBody.h"
#include "platform/Defaults.h"
#include "services/QtSettingsStore.h"
#include "tracking/BalanceHistory.h"
#include "tracking/HistoryCodec.h"

#include <QDateTime>

namespace quorvane {
namespace {

// Spend is the stored baseline minus the current balance: a lower second reading shows it, and a reset
// starts counting again from the next reading.
TEST_F(ProgramTest, ALowerBalanceIsSpendUntilTheBaselineIsReset) {
    // Balances are kept exact, however many digits they have.
    program.answerBalances({{"USD", "110.0000000000000000001"}});
    program.saveKey();
    program.answerBalances({{"USD", "107.25"}});

    const ProgramHarness::Result menu = program.run({"menu", "--json"});
    const ProgramHarness::Result status = program.run({"status", "--json"});
    const ProgramHarness::Result reset = program.run({"baseline", "reset"});
    program.answerBalances({{"USD", "106.00"}});
    const ProgramHarness::Result summary = program.run({"summary"});

    EXPECT_EQ(menu.exitCode, 0);
    EXPECT_EQ(menu.err, "");
    EXPECT_EQ(menu.out.rfind(
                  R"({"title":"🐋 $107.25","toolTip":"Quorvane","menu":[{"card":{"kind":"dashboard",)", 0),
              0u);
    EXPECT_NE(menu.out.find(R"("balance":"110.0000000000000000001"},{"timestamp":")"), std::string::npos);
    EXPECT_EQ(withoutTimes(status.out),
              R"({"text":"🐋 $107.25","tooltip":"Quorvane\nUpdated: <time>\nUSD remaining: $107.25\n)"
              R"(USD today spent: $2.75\nUSD since baseline: $2.75","class":"ok"})"
              "\n");
    EXPECT_EQ(reset.exitCode, 0);
    EXPECT_EQ(reset.out, "🐋 $107.25\n");
    EXPECT_EQ(withoutTimes(summary.out),
              "Quorvane\nUpdated: <time>\nUSD remaining: $106.00\nUSD today spent: $1.25\n"
              "USD since baseline: $1.25\n");
}

// The history the app stored is the command line's too; clearing it empties the chart until the next reading.
TEST_F(ProgramTest, TheChartKeepsFortyEightSamplesUntilTheHistoryIsCleared) {
    program.answerBalances({{"USD", "50.00"}});
    program.saveKey();
    // Sixty samples in USD, one a minute up to a minute ago, as the app would have stored them.
    const double now = static_cast<double>(QDateTime::currentSecsSinceEpoch());
    std::vector<BalancePoint> points;
    for (int i = 0; i < 60; ++i) {
        points.push_back(
            {Timestamp::fromUnixSeconds(now - (60 - i) * 60.0), "USD", Decimal::fromInteger(100 + i)});
    }
    {
        QtSettingsStore store(program.settingsFile());
        Defaults(store).setData(std::string(BalanceHistory::kHistoryKey), HistoryCodec::encode(points));
    }

    const ProgramHarness::Result before = program.run({"menu"});
    const qsizetype requests = program.requestCount();
    const ProgramHarness::Result cleared = program.run({"history", "clear"});
    const qsizetype afterClear = program.requestCount();
    const ProgramHarness::Result after = program.run({"menu"});

    EXPECT_NE(before.out.find("  [chart 48 points]\n"), std::string::npos) << before.out;
    EXPECT_EQ(cleared.exitCode, 0);
    EXPECT_EQ(cleared.out, "Usage history cleared.\n");
    EXPECT_EQ(afterClear, requests) << "clearing refreshes nothing";
    EXPECT_NE(after.out.find("  [chart 1 points]\n"), std::string::npos) << after.out;
}

TEST_F(ProgramTest, IntervalAndAutoRefreshSurviveBetweenRunsAndSendNothing) {
    program.answerBalances({{"USD", "50.00"}});
    program.saveKey();

    const ProgramHarness::Result interval = program.run({"interval", "300"});
    const ProgramHarness::Result off = program.run({"auto-refresh", "off"});
    const ProgramHarness::Result on = program.run({"auto-refresh", "on"});
    const qsizetype requests = program.requestCount();
    program.run({"auto-refresh", "off"});
    const ProgramHarness::Result menu = program.run({"menu"});

    EXPECT_EQ(interval.out, "Refresh interval: 5 min\n");
    EXPECT_EQ(off.out, "Auto-refresh: off\n");
    EXPECT_EQ(on.out, "Auto-refresh: on, every 5 min\n");
    EXPECT_EQ(requests, 1) << "only key set asked the server";
    EXPECT_NE(menu.out.find("Settings >\n  ⏸ Auto-refresh: Off\n  Refresh Interval: 5 min >\n"),
              std::string::npos)
        << menu.out;
}

TEST_F(ProgramTest, TheNotificationSettingIsStoredAndNoCommandRecordsALowBalanceAsTold) {
    program.answerBalances({{"USD", "0.50"}});
    program.saveKey();

    const ProgramHarness::Result status = program.run({"status"});
    const ProgramHarness::Result initially = program.run({"notifications", "status"});
    const ProgramHarness::Result off = program.run({"notifications", "off"});
    const qsizetype requests = program.requestCount();
    const ProgramHarness::Result stillOff = program.run({"notifications", "status"});
    const ProgramHarness::Result on = program.run({"notifications", "on"});

    EXPECT_EQ(status.out, "\xE2\x9A\xA0\xEF\xB8\x8F $0.50\n");
    EXPECT_EQ(initially.out, "Low-balance notifications: on\n");
    EXPECT_EQ(off.out, "Low-balance notifications: off\n");
    EXPECT_EQ(stillOff.out, "Low-balance notifications: off\n");
    EXPECT_EQ(on.out, "Low-balance notifications: on\n");
    EXPECT_EQ(program.requestCount(), requests) << "the setting refreshes nothing";
    QFile settings(program.settingsFile());
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    const QByteArray stored = settings.readAll();
    EXPECT_TRUE(stored.contains("lowBalanceNotifications=true\n")) << stored.constData();
    EXPECT_FALSE(stored.contains("lowBalanceNotified")) << "the app, which tells the user, keeps that record";
}

} // namespace
} // namespace quorvane
