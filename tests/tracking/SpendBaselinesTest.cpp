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

// The only test that takes the day in the clock's zone and not in UTC.
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
