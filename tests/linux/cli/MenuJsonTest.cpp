// The menu and status as JSON: every field of the model, in a fixed order, with balances kept exact.
#include "cli/MenuJson.h"

#include "app/AppDelegate.h"
#include "cli/StatusJson.h"
#include "fakes/BalanceBody.h"
#include "fakes/FakePlatform.h"
#include "json/JsonWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>

namespace quorvane {
namespace {

const std::string kWhale = "\xF0\x9F\x90\x8B";
const std::string kWarning = "\xE2\x9A\xA0\xEF\xB8\x8F";

std::string text(const JsonValue& value) {
    return JsonWriter::write(value);
}

class MenuJsonTest : public ::testing::Test {
protected:
    FakePlatform fake;
    AppDelegate delegate{fake.platform()};

    // Two successful refreshes, a minute apart, so the chart has a line.
    void refreshTwice(const std::string& first, const std::string& second) {
        fake.storeKey("sk-test");
        delegate.refreshBalance();
        fake.http.respond(200, balanceBody({{"USD", first}}));
        fake.clock.advance(60.0);
        delegate.refreshBalance();
        fake.http.respond(200, balanceBody({{"USD", second}}));
    }
};

TEST_F(MenuJsonTest, TheDashboardCardCarriesEveryLabelAndTheChartsSamples) {
    refreshTwice("110.00", "109.1234567890123456789");

    const MenuItem& card = delegate.menu().front();
    ASSERT_EQ(card.kind, MenuItem::Kind::Card);

    EXPECT_EQ(
        text(MenuJson::item(card)),
        R"({"card":{"kind":"dashboard","width":330,"height":190,"labels":[)"
        R"({"text":")" +
            kWhale +
            R"( Quorvane","frame":[18,158,290,22],"fontSize":15,"fontWeight":"semibold","color":"label","alignment":"natural"},)"
            R"({"text":"$109.1235","frame":[18,122,150,34],"fontSize":26,"fontWeight":"bold","color":"label","alignment":"natural"},)"
            R"({"text":"Today $0.8765","frame":[18,104,140,18],"fontSize":12,"fontWeight":"regular","color":"secondaryLabel","alignment":"natural"},)"
            R"({"text":"Ready","frame":[178,131,130,18],"fontSize":12,"fontWeight":"semibold","color":"systemGreen","alignment":"right"},)"
            R"({"text":"Updated 0 sec. ago )"
            "\xE2\x80\xA2"
            R"( 1 min auto-refresh","frame":[18,17,292,16],"fontSize":11,"fontWeight":"regular","color":"tertiaryLabel","alignment":"natural"}],)"
            R"("chart":{"frame":[18,42,292,52],"accentColor":"systemTeal","points":[)"
            R"({"timestamp":"2026-11-22T09:00:00.000Z","currency":"USD","balance":"110"},)"
            R"({"timestamp":"2026-11-22T09:01:00.000Z","currency":"USD","balance":"109.1234567890123456789"}]}}})");
}

TEST_F(MenuJsonTest, TheStatusCardHasNoChart) {
    delegate.applicationDidFinishLaunching();

    EXPECT_EQ(
        text(MenuJson::item(delegate.menu().front())),
        R"({"card":{"kind":"status","width":310,"height":86,"labels":[)"
        R"({"text":")" +
            kWhale +
            R"( Quorvane","frame":[16,55,280,22],"fontSize":15,"fontWeight":"semibold","color":"label","alignment":"natural"},)"
            R"({"text":"No API key yet","frame":[16,34,280,18],"fontSize":13,"fontWeight":"medium","color":"label","alignment":"natural"},)"
            R"({"text":")"
            "\xF0\x9F\x94\x90"
            R"( Add your key to start tracking","frame":[16,13,280,16],"fontSize":11,"fontWeight":"regular","color":"secondaryLabel","alignment":"natural"}],)"
            R"("chart":null}})");
}

TEST_F(MenuJsonTest, EachKindOfItemHasItsShape) {
    EXPECT_EQ(text(MenuJson::item(MenuItem::separator())), R"({"separator":true})");
    EXPECT_EQ(text(MenuJson::item(MenuItem::informational("Today: $0.00"))),
              R"({"title":"Today: $0.00","enabled":true,"command":null,"key":"","tag":0,"state":"off"})");
    EXPECT_EQ(
        text(MenuJson::item(MenuItem::commandItem("Refresh", MenuCommand::Refresh, "r"))),
        R"({"title":"Refresh","enabled":true,"command":"refreshClicked","key":"r","tag":0,"state":"off"})");
    EXPECT_EQ(
        text(MenuJson::item(MenuItem::choice("5 min", 300, true))),
        R"({"title":"5 min","enabled":true,"command":"refreshIntervalClicked:","key":"","tag":300,"state":"on"})");
    EXPECT_EQ(text(MenuJson::item(MenuItem::submenuItem("Details", {MenuItem::separator()}))),
              R"({"title":"Details","enabled":true,"command":null,"key":"","tag":0,"state":"off",)"
              R"("submenu":[{"separator":true}]})");
}

TEST_F(MenuJsonTest, TheDocumentHoldsTitleToolTipAndTheWholeTree) {
    delegate.applicationDidFinishLaunching();
    const std::string json =
        text(MenuJson::document(fake.statusItem.titles().back(), "Quorvane", delegate.menu()));

    EXPECT_EQ(json.rfind(R"({"title":")" + kWhale +
                             R"( Key?","toolTip":"Quorvane","menu":[{"card":{"kind":"status")",
                         0),
              0u)
        << json;
    EXPECT_NE(json.find(R"({"title":"Settings","enabled":true,"command":null,"key":"","tag":0,"state":"off",)"
                        R"("submenu":[{"title":")"
                        "\xE2\x8F\xB1"
                        R"( Auto-refresh: On","enabled":true,"command":"toggleAutoRefreshClicked",)"
                        R"("key":"","tag":0,"state":"off"},{"title":"Refresh Interval: 1 min")"),
              std::string::npos)
        << json;
    EXPECT_NE(
        json.find(
            R"({"title":"1 min","enabled":true,"command":"refreshIntervalClicked:","key":"","tag":60,"state":"on"})"),
        std::string::npos);
    const std::string end = R"({"separator":true},{"title":")"
                            "\xE2\x8C\x98"
                            R"( Quit","enabled":true,)"
                            R"("command":"quitClicked","key":"q","tag":0,"state":"off"}]})";
    ASSERT_GT(json.size(), end.size());
    EXPECT_EQ(json.substr(json.size() - end.size()), end) << json;
}

struct TimestampCase {
    const char* name;
    double unixSeconds;
    std::optional<std::string> text;
};

void PrintTo(const TimestampCase& c, std::ostream* os) {
    *os << c.name;
}

class MenuJsonTimestampTest : public ::testing::TestWithParam<TimestampCase> {};

TEST_P(MenuJsonTimestampTest, TimestampsAreIsoUtcToTheMillisecond) {
    EXPECT_EQ(MenuJson::isoTimestamp(Timestamp::fromUnixSeconds(GetParam().unixSeconds)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Times, MenuJsonTimestampTest,
    ::testing::Values(TimestampCase{"ReferenceDate", 978307200.0, "2001-01-01T00:00:00.000Z"},
                      TimestampCase{"Milliseconds", 1795338000.25, "2026-11-22T09:00:00.250Z"},
                      TimestampCase{"RoundedToTheNearest", 1795338000.0006, "2026-11-22T09:00:00.001Z"},
                      TimestampCase{"BeforeTheEpoch", -86400.0, "1969-12-31T00:00:00.000Z"},
                      TimestampCase{"FarFuture", 1.0e13, std::nullopt},
                      TimestampCase{"NotANumber", std::numeric_limits<double>::quiet_NaN(), std::nullopt}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(MenuJsonNumberTest, NumbersAreShortAndNeverInvalidJson) {
    EXPECT_EQ(text(MenuJson::number(18.0)), "18");
    EXPECT_EQ(text(MenuJson::number(0.5)), "0.5");
    EXPECT_EQ(text(MenuJson::number(-42.25)), "-42.25");
    EXPECT_EQ(text(MenuJson::number(std::numeric_limits<double>::infinity())), "null");
    EXPECT_EQ(text(MenuJson::number(std::nan(""))), "null");
}

struct ClassCase {
    const char* name;
    std::string title;
    std::string className;
};

void PrintTo(const ClassCase& c, std::ostream* os) {
    *os << c.name;
}

class StatusJsonClassTest : public ::testing::TestWithParam<ClassCase> {};

TEST_P(StatusJsonClassTest, TheClassFollowsTheTitle) {
    EXPECT_EQ(StatusJson::className(GetParam().title, kWhale), GetParam().className);
}

INSTANTIATE_TEST_SUITE_P(Titles, StatusJsonClassTest,
                         ::testing::Values(ClassCase{"Balance", kWhale + " $12.00", "ok"},
                                           ClassCase{"Low", kWarning + " $0.50", "low"},
                                           ClassCase{"LowZero", kWarning + " $0.00", "low"},
                                           ClassCase{"Failed", kWhale + " !", "error"},
                                           ClassCase{"NoKey", kWhale + " Key?", "nokey"},
                                           ClassCase{"NoBalance", kWhale + " 0", "ok"},
                                           ClassCase{"Launched", kWhale + " DS", "ok"},
                                           ClassCase{"Refreshing", kWhale + " ...", "ok"},
                                           ClassCase{"ABalanceEndingInABang", kWhale + " $1 !", "ok"},
                                           ClassCase{"Nothing", "", "ok"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(StatusJsonTest, TheDocumentIsOneWaybarObject) {
    EXPECT_EQ(text(StatusJson::document(kWarning + " $0.50", kWhale, "Quorvane\nUSD remaining: $0.50")),
              R"({"text":")" + kWarning +
                  R"( $0.50","tooltip":"Quorvane\nUSD remaining: $0.50","class":"low"})");
}

} // namespace
} // namespace quorvane
