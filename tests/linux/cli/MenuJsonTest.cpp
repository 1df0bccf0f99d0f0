// The menu and status as JSON: every field of the model, in a fixed order, with balances kept exact.
#include "cli/MenuJson.h"

#include "cli/StatusJson.h"
#include "fakes/DelegateTest.h"
#include "icu/IcuFormatter.h"
#include "json/JsonWriter.h"

#include <gtest/gtest.h>

#include <limits>

namespace quorvane {
namespace {

const std::string kWhale = "\xF0\x9F\x90\x8B";
const std::string kWarning = "\xE2\x9A\xA0\xEF\xB8\x8F";

std::string text(const JsonValue& value) {
    return JsonWriter::write(value);
}

// Timestamps are ISO UTC to the nearest millisecond; a number JSON cannot hold is null.
TEST(MenuJsonValueTest, TimestampsAndNumbersAreAlwaysValidJson) {
    const auto iso = [](double seconds) {
        return MenuJson::isoTimestamp(Timestamp::fromUnixSeconds(seconds));
    };
    EXPECT_EQ(iso(1795338000.25), "2026-11-22T09:00:00.250Z");
    EXPECT_EQ(iso(1795338000.0006), "2026-11-22T09:00:00.001Z");
    EXPECT_EQ(iso(-86400.0), "1969-12-31T00:00:00.000Z");
    EXPECT_EQ(iso(1.0e13), std::nullopt);
    EXPECT_EQ(iso(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_EQ(text(MenuJson::number(-42.25)), "-42.25");
    EXPECT_EQ(text(MenuJson::number(18.0)), "18");
    EXPECT_EQ(text(MenuJson::number(std::numeric_limits<double>::infinity())), "null");
}

// One item of each kind, and the dashboard after two readings: every field,
// in its order, with the balances as exact as they were sent.
using MenuJsonTest = DelegateTest;

TEST_F(MenuJsonTest, EachKindOfItemAndTheCardKeepEveryField) {
    const std::vector<MenuItem> items = {
        MenuItem::separator(),
        MenuItem::informational("Today: $2.75"),
        MenuItem::commandItem("Refresh", MenuCommand::Refresh, "r"),
        MenuItem::submenuItem("Interval", {MenuItem::choice("1 min", 60, true)}),
    };
    EXPECT_EQ(
        text(MenuJson::document(kWhale + " $1.00", "Quorvane", items)),
        R"({"title":"🐋 $1.00","toolTip":"Quorvane","menu":[{"separator":true},)"
        R"({"title":"Today: $2.75","enabled":true,"command":null,"key":"","tag":0,"state":"off"},)"
        R"({"title":"Refresh","enabled":true,"command":"refreshClicked","key":"r","tag":0,"state":"off"},)"
        R"({"title":"Interval","enabled":true,"command":null,"key":"","tag":0,"state":"off","submenu":[)"
        R"({"title":"1 min","enabled":true,"command":"refreshIntervalClicked:","key":"","tag":60,"state":"on"}]}]})");

    refreshWith(200, balanceBody({{"USD", "110.0000000000000000001"}}));
    fake.clock.advance(60.0);
    refreshWith(200, balanceBody({{"USD", "107.25"}}));
    EXPECT_EQ(
        text(MenuJson::item(delegate.menu().front())),
        R"({"card":{"kind":"dashboard","width":330,"height":190,"labels":[)"
        R"({"text":"🐋 Quorvane","frame":[18,158,290,22],"fontSize":15,"fontWeight":"semibold","color":"label","alignment":"natural"},)"
        R"({"text":"$107.25","frame":[18,122,150,34],"fontSize":26,"fontWeight":"bold","color":"label","alignment":"natural"},)"
        R"({"text":"Today $2.75","frame":[18,104,140,18],"fontSize":12,"fontWeight":"regular","color":"secondaryLabel","alignment":"natural"},)"
        R"({"text":"Ready","frame":[178,131,130,18],"fontSize":12,"fontWeight":"semibold","color":"systemGreen","alignment":"right"},)"
        R"({"text":"Updated 0 sec. ago • 1 min auto-refresh","frame":[18,17,292,16],"fontSize":11,"fontWeight":"regular","color":"tertiaryLabel","alignment":"natural"}],)"
        R"("chart":{"frame":[18,42,292,52],"accentColor":"systemTeal","points":[)"
        R"({"timestamp":"2026-11-22T09:00:00.000Z","currency":"USD","balance":"110.0000000000000000001"},)"
        R"({"timestamp":"2026-11-22T09:01:00.000Z","currency":"USD","balance":"107.25"}]}}})");
}

TEST(StatusJsonTest, TheDocumentIsOneWaybarObjectWhoseClassFollowsTheTitlesState) {
    const IcuFormatter formatter("en_US");
    RefreshFacts low;
    low.currencies.push_back({"USD", Decimal::parseExact("0.50").value(), {}, {}, {}, {}, false});
    low.preferredIndex = 0;
    EXPECT_EQ(text(StatusJson::document(StatusTitle::forFacts(low, kWhale, formatter),
                                        "Quorvane\nUSD remaining: $0.50")),
              R"({"text":")" + kWarning +
                  R"( $0.50","tooltip":"Quorvane\nUSD remaining: $0.50","class":"low"})");
    using State = StatusTitle::State;
    const std::pair<State, std::string> states[] = {{State::Launched, "ok"},  {State::Refreshing, "ok"},
                                                    {State::NoKey, "nokey"},  {State::Failed, "error"},
                                                    {State::NoBalance, "ok"}, {State::Healthy, "ok"},
                                                    {State::Low, "low"}};
    for (const auto& [state, className] : states) {
        EXPECT_EQ(StatusJson::className(state), className) << static_cast<int>(state);
    }
}

} // namespace
} // namespace quorvane
