// What the command line shows for each answer of the balance endpoint, the spend it derives, and what it
// keeps between runs.
#include "ProgramHarness.h"
#include "fakes/BalanceBody.h"
#include "platform/Defaults.h"
#include "services/QtSettingsStore.h"
#include "tracking/BalanceHistory.h"
#include "tracking/HistoryCodec.h"

#include <QDateTime>

namespace quorvane {
namespace {

std::string repeated(const std::string& piece, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

// Each answer gets a fresh home: the title key set prints, the class of "status --json" and a part of the
// text menu. A failed refresh is shown, not a failed command.
TEST(ProgramAnswerTest, TheTitleClassAndMenuFollowTheAnswer) {
    const struct {
        int status;
        std::string body;
        std::string title;
        std::string className;
        std::string menu;
    } cases[] = {
        // The title prefers USD; the details keep the answer's order.
        {200, balanceBody({{"CNY", "20.5"}, {"USD", "110.00"}}), "🐋 $110.00", "ok",
         "Details >\n  Remaining: CN¥20.50\n  Granted: CN¥0.00\n  Topped up: CN¥20.50\n"
         "  Today spent: CN¥0.00\n  Since baseline: CN¥0.00\n  🟢 Balance looks healthy\n  ---\n"
         "  Remaining: $110.00\n  Granted: $0.00\n  Topped up: $110.00\n"},
        {200, balanceBody({{"USD", "1.00"}}), "⚠️ $1.00", "low", "  ⚠️ Low balance warning\n"},
        {200, balanceBody({}), "🐋 0", "ok",
         "[chart 0 points]\n  Updated 0 sec. ago • 1 min auto-refresh\n---\nNo balance returned\n"
         "Details >\n  API status: ready\n  Updated: 0 sec. ago\n---\n"},
        {200, balanceBody({{"USD", "25"}}, false), "🐋 $25.00", "ok",
         "  $25.00\n  Today $0.00\n  No balance\n"},
        // The error line quotes the body's first eighty characters, not bytes.
        {401, repeated("é123456789", 20), "🐋 !", "error",
         "[card status]\n  🐋 Quorvane\n  Could not refresh balance\n  ⚠️ HTTP 401 " +
             repeated("é123456789", 8) + "\n---\n"},
        {500, "\xFF\xFE" + repeated("x", 100), "🐋 !", "error", "  ⚠️ HTTP 500 \n---\n"},
    };
    for (const auto& c : cases) {
        ProgramHarness program;
        program.answer(c.status, QByteArray::fromStdString(c.body));

        const ProgramHarness::Result saved =
            program.run({"key", "set"}, QByteArray::fromStdString(ProgramHarness::kKey));
        const ProgramHarness::Result json = program.run({"status", "--json"});
        const ProgramHarness::Result menu = program.run({"menu"});

        EXPECT_EQ(saved.exitCode, 0);
        EXPECT_EQ(saved.out, c.title + "\n");
        EXPECT_EQ(json.exitCode, 0);
        EXPECT_EQ(json.err, "");
        EXPECT_EQ(json.out.rfind("{\"text\":\"" + c.title + "\",\"tooltip\":\"Quorvane", 0), 0u) << json.out;
        EXPECT_TRUE(json.out.ends_with("\",\"class\":\"" + c.className + "\"}\n")) << json.out;
        EXPECT_NE(menu.out.find(c.menu), std::string::npos) << menu.out;
        program.expectKeyOnlyInTheSecretStore();
    }
}

// Spend is the stored baseline minus the current balance: a lower second reading shows it, and a reset
// starts counting again from the next reading. The JSON of this state is given exactly.
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

    const auto item = [](const std::string& title, const std::string& command = "",
                         const std::string& key = "", int tag = 0, const char* state = "off") {
        return R"({"title":")" + title + R"(","enabled":true,"command":)" +
               (command.empty() ? "null" : "\"" + command + "\"") + R"(,"key":")" + key + R"(","tag":)" +
               std::to_string(tag) + R"(,"state":")" + state + "\"}";
    };
    const auto submenu = [&](const std::string& title, const std::string& items) {
        return item(title).substr(0, item(title).size() - 1) + R"(,"submenu":[)" + items + "]}";
    };
    const std::string separator = R"({"separator":true})";
    EXPECT_EQ(menu.exitCode, 0);
    EXPECT_EQ(
        withoutTimes(menu.out),

        R"({"title":"🐋 $107.25","toolTip":"Quorvane","menu":[)"
        R"({"card":{"kind":"dashboard","width":330,"height":190,"labels":[)"
        R"({"text":"🐋 Quorvane","frame":[18,158,290,22],"fontSize":15,"fontWeight":"semibold","color":"label","alignment":"natural"},)"
        R"({"text":"$107.25","frame":[18,122,150,34],"fontSize":26,"fontWeight":"bold","color":"label","alignment":"natural"},)"
        R"({"text":"Today $2.75","frame":[18,104,140,18],"fontSize":12,"fontWeight":"regular","color":"secondaryLabel","alignment":"natural"},)"
        R"({"text":"Ready","frame":[178,131,130,18],"fontSize":12,"fontWeight":"semibold","color":"systemGreen","alignment":"right"},)"
        R"({"text":"Updated 0 sec. ago • 1 min auto-refresh","frame":[18,17,292,16],"fontSize":11,"fontWeight":"regular","color":"tertiaryLabel","alignment":"natural"}],)"
        R"("chart":{"frame":[18,42,292,52],"accentColor":"systemTeal","points":[)"
        R"({"timestamp":"<time>","currency":"USD","balance":"110.0000000000000000001"},)"
        R"({"timestamp":"<time>","currency":"USD","balance":"107.25"}]}}},)" +
            separator + "," + item("Today: $2.75") + "," + item("Baseline: $2.75") + "," +
            item("⏱ Auto-refresh: every 1 min") + "," +
            submenu("Details", item("Remaining: $107.25") + "," + item("Granted: $0.00") + "," +
                                   item("Topped up: $107.25") + "," + item("Today spent: $2.75") + "," +
                                   item("Since baseline: $2.75") + "," + item("🟢 Balance looks healthy") +
                                   "," + separator + "," + item("API status: ready") + "," +
                                   item("Updated: 0 sec. ago")) +
            "," + separator + "," + item("🔄 Refresh Now", "refreshClicked", "r") + "," +
            item("📋 Copy Summary", "copySummaryClicked", "c") + "," +
            submenu("Settings", item("⏱ Auto-refresh: On", "toggleAutoRefreshClicked") + "," +
                                    submenu("Refresh Interval: 1 min",
                                            item("30 sec", "refreshIntervalClicked:", "", 30) + "," +
                                                item("1 min", "refreshIntervalClicked:", "", 60, "on") + "," +
                                                item("5 min", "refreshIntervalClicked:", "", 300) + "," +
                                                item("15 min", "refreshIntervalClicked:", "", 900)) +
                                    "," + separator + "," + item("Set API Key...", "setAPIKeyClicked", ",") +
                                    "," + item("Reset Spend Baseline", "resetBaselineClicked") + "," +
                                    item("Clear Usage History", "clearHistoryClicked") + "," +
                                    item("Remove API Key", "removeAPIKeyClicked") + "," + separator + "," +
                                    item("Open DeepSeek Billing", "openBillingClicked", "b")) +
            "," + separator + "," + item("⌘ Quit", "quitClicked", "q") + "]}\n");
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

// The card's chart keeps the newest 48 samples; clearing the history empties it until the next reading.
TEST_F(ProgramTest, TheChartKeepsFortyEightSamplesUntilTheHistoryIsCleared) {
    program.answerBalances({{"USD", "50.00"}});
    program.saveKey();
    // Samples 100, 101, ..., 159 in USD, one a minute up to a minute ago.
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

    const std::string json = program.run({"menu", "--json"}).out;
    const qsizetype requests = program.requestCount();
    const ProgramHarness::Result cleared = program.run({"history", "clear"});
    const qsizetype afterClear = program.requestCount();
    const ProgramHarness::Result menu = program.run({"menu"});

    std::size_t count = 0;
    for (std::size_t at = json.find(R"("currency":"USD")"); at != std::string::npos;
         at = json.find(R"("currency":"USD")", at + 1)) {
        ++count;
    }
    EXPECT_EQ(count, 48u);
    EXPECT_NE(json.find(R"("points":[{"timestamp":")"), std::string::npos) << json;
    EXPECT_NE(json.find(R"(","currency":"USD","balance":"113"},)"), std::string::npos)
        << "the 14th stored is the oldest";
    EXPECT_EQ(json.find(R"("balance":"112")"), std::string::npos);
    EXPECT_NE(json.find(R"("balance":"50"}]}}})"), std::string::npos) << "the newest is this run's reading";
    EXPECT_EQ(cleared.exitCode, 0);
    EXPECT_EQ(cleared.out, "Usage history cleared.\n");
    EXPECT_EQ(afterClear, requests) << "clearing refreshes nothing";
    EXPECT_NE(menu.out.find("  [chart 1 points]\n"), std::string::npos) << menu.out;
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
    EXPECT_NE(menu.out.find("⏸ Auto-refresh: off\nDetails >\n"), std::string::npos) << menu.out;
    EXPECT_NE(menu.out.find("  Updated 0 sec. ago • 5 min auto-refresh\n"), std::string::npos);
    EXPECT_NE(menu.out.find("Settings >\n  ⏸ Auto-refresh: Off\n  Refresh Interval: 5 min >\n"
                            "      30 sec\n      1 min\n    ✓ 5 min\n      15 min\n"),
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
