// The exact JSON of "status --json" and "menu --json" for one state: what scripts and status bars parse.
#include "ProgramHarness.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

// The expected texts are written with a plain blank after "$"; the locale puts a no-break space there.
std::string withMoneySpaces(std::string text) {
    for (std::size_t at = text.find("$ "); at != std::string::npos; at = text.find("$ ", at + 1)) {
        text.replace(at + 1, 1, "\xC2\xA0");
    }
    return text;
}

class ProgramJsonTest : public ::testing::Test {
protected:
    ProgramHarness program;

    // A first reading of 110.00, then 107.25.
    void SetUp() override {
        program.answerBalances({{"USD", "110.00"}});
        program.saveKey();
        program.answerBalances({{"USD", "107.25"}});
    }
};

TEST_F(ProgramJsonTest, StatusIsOneWaybarObjectOnOneLine) {
    const ProgramHarness::Result status = program.run({"status", "--json"});

    EXPECT_EQ(status.exitCode, 0);
    EXPECT_EQ(withoutTimes(status.out),
              withMoneySpaces(
                  R"({"text":"🐋 $ 107.25","tooltip":"Quorvane\nUpdated: <time>\nUSD remaining: $ 107.25\n)"
                  R"(USD today spent: $ 2.75\nUSD since baseline: $ 2.75","class":"ok"})"
                  "\n"));
}

TEST_F(ProgramJsonTest, TheMenuIsTheWholeModel) {
    const ProgramHarness::Result menu = program.run({"menu", "--json"});

    EXPECT_EQ(menu.exitCode, 0);
    const std::string info = R"("enabled":true,"command":null,"key":"","tag":0,"state":"off"})";
    EXPECT_EQ(
        withoutTimes(menu.out),
        withMoneySpaces(
            R"({"title":"🐋 $ 107.25","toolTip":"Quorvane","menu":[)"
            R"({"card":{"kind":"dashboard","width":330,"height":190,"labels":[)"
            R"({"text":"🐋 Quorvane","frame":[18,158,290,22],"fontSize":15,"fontWeight":"semibold","color":"label","alignment":"natural"},)"
            R"({"text":"$ 107.25","frame":[18,122,150,34],"fontSize":26,"fontWeight":"bold","color":"label","alignment":"natural"},)"
            R"({"text":"Today $ 2.75","frame":[18,104,140,18],"fontSize":12,"fontWeight":"regular","color":"secondaryLabel","alignment":"natural"},)"
            R"({"text":"Ready","frame":[178,131,130,18],"fontSize":12,"fontWeight":"semibold","color":"systemGreen","alignment":"right"},)"
            R"({"text":"Updated 0 sec. ago • 1 min auto-refresh","frame":[18,17,292,16],"fontSize":11,"fontWeight":"regular","color":"tertiaryLabel","alignment":"natural"}],)"
            R"("chart":{"frame":[18,42,292,52],"accentColor":"systemTeal","points":[)"
            R"({"timestamp":"<time>","currency":"USD","balance":"110"},)"
            R"({"timestamp":"<time>","currency":"USD","balance":"107.25"}]}}},)"
            R"({"separator":true},)"
            R"({"title":"Today: $ 2.75",)" +
            info + "," + R"({"title":"Baseline: $ 2.75",)" + info + "," +
            R"({"title":"⏱ Auto-refresh: every 1 min",)" + info + "," +
            R"({"title":"Details","enabled":true,"command":null,"key":"","tag":0,"state":"off","submenu":[)"
            R"({"title":"Remaining: $ 107.25",)" +
            info + "," + R"({"title":"Granted: $ 0.00",)" + info + "," +
            R"({"title":"Topped up: $ 107.25",)" + info + "," + R"({"title":"Today spent: $ 2.75",)" + info +
            "," + R"({"title":"Since baseline: $ 2.75",)" + info + "," +
            R"({"title":"🟢 Balance looks healthy",)" + info + "," +
            R"({"separator":true},)"
            R"({"title":"API status: ready",)" +
            info + "," + R"({"title":"Updated: 0 sec. ago",)" + info + "]}," +
            R"({"separator":true},)"
            R"({"title":"🔄 Refresh Now","enabled":true,"command":"refreshClicked","key":"r","tag":0,"state":"off"},)"
            R"({"title":"📋 Copy Summary","enabled":true,"command":"copySummaryClicked","key":"c","tag":0,"state":"off"},)"
            R"({"title":"Settings","enabled":true,"command":null,"key":"","tag":0,"state":"off","submenu":[)"
            R"({"title":"⏱ Auto-refresh: On","enabled":true,"command":"toggleAutoRefreshClicked","key":"","tag":0,"state":"off"},)"
            R"({"title":"Refresh Interval: 1 min","enabled":true,"command":null,"key":"","tag":0,"state":"off","submenu":[)"
            R"({"title":"30 sec","enabled":true,"command":"refreshIntervalClicked:","key":"","tag":30,"state":"off"},)"
            R"({"title":"1 min","enabled":true,"command":"refreshIntervalClicked:","key":"","tag":60,"state":"on"},)"
            R"({"title":"5 min","enabled":true,"command":"refreshIntervalClicked:","key":"","tag":300,"state":"off"},)"
            R"({"title":"15 min","enabled":true,"command":"refreshIntervalClicked:","key":"","tag":900,"state":"off"}]},)"
            R"({"separator":true},)"
            R"({"title":"Set API Key...","enabled":true,"command":"setAPIKeyClicked","key":",","tag":0,"state":"off"},)"
            R"({"title":"Reset Spend Baseline","enabled":true,"command":"resetBaselineClicked","key":"","tag":0,"state":"off"},)"
            R"({"title":"Clear Usage History","enabled":true,"command":"clearHistoryClicked","key":"","tag":0,"state":"off"},)"
            R"({"title":"Remove API Key","enabled":true,"command":"removeAPIKeyClicked","key":"","tag":0,"state":"off"},)"
            R"({"separator":true},)"
            R"({"title":"Open DeepSeek Billing","enabled":true,"command":"openBillingClicked","key":"b","tag":0,"state":"off"}]},)"
            R"({"separator":true},)"
            R"({"title":"⌘ Quit","enabled":true,"command":"quitClicked","key":"q","tag":0,"state":"off"}]})"
            "\n"));
}

} // namespace
} // namespace quorvane
