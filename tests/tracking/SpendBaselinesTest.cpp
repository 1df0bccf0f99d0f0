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
