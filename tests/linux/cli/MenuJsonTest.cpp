// The menu and status as JSON: every field of the model, in a fixed order, with balances kept exact.
#include "cli/MenuJson.h"

#include "cli/StatusJson.h"
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
