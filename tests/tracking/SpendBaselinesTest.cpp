#include "tracking/SpendBaselines.h"

#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsStore.h"
#include "icu/IcuFormatter.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

BalanceInfo info(const std::string& currency, const std::string& total) {
    return BalanceInfo{currency, total, "0.00", total};
}

BalanceResponse response(std::vector<BalanceInfo> infos) {
    return BalanceResponse{true, std::move(infos)};
}

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
};

TEST_F(SpendBaselinesTest, FirstRefreshStoresBothBaselinesInResponseOrder) {
    baselines.updateBaselinesIfNeeded(response({info("USD", "10.00"), info("CNY", "70.5")}));

    EXPECT_EQ(store.log(), (std::vector<std::string>{"set dayKey", "set dayStart.USD", "set dayStart.CNY",
                                                     "set firstStart.USD", "set firstStart.CNY"}));
    EXPECT_EQ(stored("dayKey"), "2026-03-01");
    EXPECT_EQ(stored("dayStart.USD"), "10.00");
    EXPECT_EQ(stored("firstStart.CNY"), "70.5");
    EXPECT_EQ(baselines.spentToday(dec("10.00"), "USD"), Decimal());
    EXPECT_EQ(baselines.spentSinceBaseline(dec("70.5"), "CNY"), Decimal());
}

TEST_F(SpendBaselinesTest, SameDayKeepsTheDayBaselineAndNewCurrenciesGetOnlyAUserBaseline) {
    baselines.updateBaselinesIfNeeded(response({info("USD", "10.00")}));
    clock.advance(60);
    baselines.updateBaselinesIfNeeded(response({info("USD", "7.5"), info("CNY", "20")}));

    EXPECT_EQ(stored("dayStart.USD"), "10.00");
    EXPECT_EQ(stored("dayStart.CNY"), std::nullopt);
    EXPECT_EQ(stored("firstStart.CNY"), "20");
    EXPECT_EQ(baselines.spentToday(dec("7.5"), "USD"), dec("2.5"));
    EXPECT_EQ(baselines.spentToday(dec("15"), "CNY"), Decimal()) << "no day baseline: no spend";
    EXPECT_EQ(baselines.spentSinceBaseline(dec("15"), "CNY"), dec("5"));
}

TEST_F(SpendBaselinesTest, LocalMidnightStartsANewDayWhileSinceBaselineKeepsCounting) {
    baselines.updateBaselinesIfNeeded(response({info("USD", "10.00")}));
    clock.advance(29 * 60 + 59); // 23:59:59 local
    baselines.updateBaselinesIfNeeded(response({info("USD", "9.00")}));
    EXPECT_EQ(stored("dayKey"), "2026-03-01");
    EXPECT_EQ(baselines.spentToday(dec("9.00"), "USD"), dec("1"));

    clock.advance(1); // 00:00:00 local, still 23:00 of the 1st in UTC
    baselines.updateBaselinesIfNeeded(response({info("USD", "8.75")}));
    EXPECT_EQ(stored("dayKey"), "2026-03-02");
    EXPECT_EQ(stored("dayStart.USD"), "8.75");
    EXPECT_EQ(baselines.spentToday(dec("8.75"), "USD"), Decimal());
    EXPECT_EQ(baselines.spentSinceBaseline(dec("8.75"), "USD"), dec("1.25"));
}

TEST_F(SpendBaselinesTest, ANewDayListingNoCurrencyMovesTheDayKeyOnly) {
    baselines.updateBaselinesIfNeeded(response({info("USD", "10.00")}));
    clock.advance(86400);
    baselines.updateBaselinesIfNeeded(response({}));
    EXPECT_EQ(stored("dayKey"), "2026-03-02");
    EXPECT_EQ(stored("dayStart.USD"), "10.00");
    EXPECT_EQ(baselines.spentToday(dec("9"), "USD"), dec("1"));
}

TEST_F(SpendBaselinesTest, SpendIsStoredTextMinusCurrentAndNeverNegative) {
    struct Case {
        std::optional<std::string> baseline;
        const char* current;
        const char* spend;
    };
    const Case cases[] = {
        {"10.00", "7.5", "2.5"},
        {"10.00", "12", "0"}, // a top-up shows no spend
        {"10.00", "10.00", "0"},
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

TEST_F(SpendBaselinesTest, ATopUpNeverMovesTheBaseline) {
    baselines.updateBaselinesIfNeeded(response({info("USD", "10.00")}));
    baselines.updateBaselinesIfNeeded(response({info("USD", "12")}));
    EXPECT_EQ(stored("dayStart.USD"), "10.00");
    EXPECT_EQ(stored("firstStart.USD"), "10.00");
    EXPECT_EQ(baselines.spentToday(dec("12"), "USD"), Decimal());
    EXPECT_EQ(baselines.spentToday(dec("9.5"), "USD"), dec("0.5"));
}

TEST_F(SpendBaselinesTest, ResetRemovesFiveKeysAndKeepsOtherCurrencies) {
    baselines.updateBaselinesIfNeeded(response({info("USD", "10"), info("CNY", "50"), info("EUR", "5")}));
    store.clearLog();
    baselines.resetBaselines();

    EXPECT_EQ(store.log(),
              (std::vector<std::string>{"remove dayKey", "remove dayStart.USD", "remove firstStart.USD",
                                        "remove dayStart.CNY", "remove firstStart.CNY"}));
    EXPECT_EQ(stored("firstStart.EUR"), "5");

    baselines.updateBaselinesIfNeeded(response({info("USD", "8"), info("CNY", "40"), info("EUR", "4")}));
    EXPECT_EQ(baselines.spentToday(dec("8"), "USD"), Decimal());
    EXPECT_EQ(baselines.spentSinceBaseline(dec("40"), "CNY"), Decimal());
    EXPECT_EQ(baselines.spentToday(dec("4"), "EUR"), Decimal());
    EXPECT_EQ(baselines.spentSinceBaseline(dec("4"), "EUR"), dec("1"));
}

} // namespace
} // namespace quorvane
