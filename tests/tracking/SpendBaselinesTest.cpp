#include "tracking/SpendBaselines.h"

#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsStore.h"
#include "icu/IcuFormatter.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

Decimal dec(std::string_view text) {
    return Decimal::parse(text).value();
}

// 2026-03-01T22:30:00Z, which is 23:30 in Berlin (UTC+1 in March before the switch).
constexpr Timestamp kBerlinLateEvening = Timestamp::fromUnixSeconds(1772404200.0);

class SpendBaselinesTest : public ::testing::Test {
protected:
    MemorySettingsStore store;
    Defaults defaults{store};
    FakeClock clock{kBerlinLateEvening, "Europe/Berlin"};
    IcuFormatter formatter{"en_US"};
    SpendBaselines baselines{defaults, clock, formatter};

    std::optional<std::string> stored(const std::string& key) const { return defaults.stringValue(key); }
    void update(const std::vector<std::pair<std::string, std::string>>& totals) {
        BalanceResponse response{true, {}};
        for (const auto& [currency, total] : totals) {
            response.balanceInfos.push_back({currency, total, "0.00", total});
        }
        baselines.updateBaselinesIfNeeded(response);
    }
};

TEST_F(SpendBaselinesTest, TheFirstRefreshOfADaySetsItsBaselinesAndLaterOnesOnlyNewCurrencies) {
    update({{"USD", "10.00"}, {"CNY", "70.5"}});
    EXPECT_EQ(store.log(), (std::vector<std::string>{"set dayKey", "set dayStart.USD", "set dayStart.CNY",
                                                     "set firstStart.USD", "set firstStart.CNY"}));
    EXPECT_EQ(stored("dayKey"), "2026-03-01");
    EXPECT_EQ(stored("firstStart.CNY"), "70.5");

    // A top-up moves no baseline; a currency new that day gets only the user's.
    clock.advance(60);
    update({{"USD", "12"}, {"EUR", "20"}});
    EXPECT_EQ(stored("dayStart.USD"), "10.00");
    EXPECT_EQ(stored("firstStart.USD"), "10.00");
    EXPECT_EQ(stored("dayStart.EUR"), std::nullopt);
    EXPECT_EQ(stored("firstStart.EUR"), "20");
    EXPECT_EQ(baselines.spentToday(dec("9.5"), "USD"), dec("0.5"));
    EXPECT_EQ(baselines.spentToday(dec("15"), "EUR"), Decimal()) << "no day baseline: no spend";
    EXPECT_EQ(baselines.spentSinceBaseline(dec("15"), "EUR"), dec("5"));
}

TEST_F(SpendBaselinesTest, LocalMidnightStartsANewDayWhileSinceBaselineKeepsCounting) {
    update({{"USD", "10.00"}});
    clock.advance(29 * 60 + 59); // 23:59:59 local
    update({{"USD", "9.00"}});
    EXPECT_EQ(stored("dayKey"), "2026-03-01");
    EXPECT_EQ(baselines.spentToday(dec("9.00"), "USD"), dec("1"));

    clock.advance(1); // 00:00:00 local, still 23:00 of the 1st in UTC
    update({{"USD", "8.75"}});
    EXPECT_EQ(stored("dayKey"), "2026-03-02");
    EXPECT_EQ(stored("dayStart.USD"), "8.75");
    EXPECT_EQ(baselines.spentToday(dec("8.75"), "USD"), Decimal());
    EXPECT_EQ(baselines.spentSinceBaseline(dec("8.75"), "USD"), dec("1.25"));

    // A new day listing no currency moves the day key only.
    clock.advance(86400);
    update({});
    EXPECT_EQ(stored("dayKey"), "2026-03-03");
    EXPECT_EQ(baselines.spentToday(dec("8"), "USD"), dec("0.75"));
}

TEST_F(SpendBaselinesTest, SpendIsStoredTextMinusCurrentAndNeverNegative) {
    struct Case {
        std::optional<std::string> baseline;
        const char* current;
        const char* spend;
    };
    const Case cases[] = {
        {"10.00", "7.5", "2.5"},
        {"10.00", "12", "0"},       // a top-up shows no spend
        {"not a number", "3", "0"}, // an unreadable baseline counts as 0
        {std::nullopt, "3", "0"},   // no baseline: the current balance is its own
        {"12345678901234567890.123456789", "0.000000001", "12345678901234567890.123456788"},
    };
    for (const Case& c : cases) {
        store.remove("dayStart.USD");
        store.remove("firstStart.USD");
        if (c.baseline) {
            defaults.setString("dayStart.USD", *c.baseline);
            defaults.setString("firstStart.USD", *c.baseline);
        }
        const std::string label = c.baseline.value_or("(none)") + " - " + c.current;
        EXPECT_EQ(baselines.spentToday(dec(c.current), "USD").toString(), c.spend) << label;
        EXPECT_EQ(baselines.spentSinceBaseline(dec(c.current), "USD").toString(), c.spend) << label;
    }
}

TEST_F(SpendBaselinesTest, ResetRemovesFiveKeysAndKeepsOtherCurrencies) {
    update({{"USD", "10"}, {"CNY", "50"}, {"EUR", "5"}});
    const std::size_t before = store.log().size();
    baselines.resetBaselines();
    EXPECT_EQ(std::vector<std::string>(store.log().begin() + static_cast<std::ptrdiff_t>(before),
                                       store.log().end()),
              (std::vector<std::string>{"remove dayKey", "remove dayStart.USD", "remove firstStart.USD",
                                        "remove dayStart.CNY", "remove firstStart.CNY"}));
    EXPECT_EQ(stored("firstStart.EUR"), "5");

    update({{"USD", "8"}, {"CNY", "40"}, {"EUR", "4"}});
    EXPECT_EQ(baselines.spentToday(dec("8"), "USD"), Decimal());
    EXPECT_EQ(baselines.spentSinceBaseline(dec("40"), "CNY"), Decimal());
    EXPECT_EQ(baselines.spentSinceBaseline(dec("4"), "EUR"), dec("1"));
}

} // namespace
} // namespace quorvane
