#include "tracking/BalanceHistory.h"

#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsStore.h"
#include "tracking/HistoryCodec.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

BalanceResponse response(std::vector<std::pair<std::string, std::string>> balances) {
    BalanceResponse r{true, {}};
    for (auto& [currency, total] : balances) {
        r.balanceInfos.push_back(BalanceInfo{currency, total, "0", total});
    }
    return r;
}

class BalanceHistoryTest : public ::testing::Test {
protected:
    MemorySettingsStore store;
    Defaults defaults{store};
    FakeClock clock{Timestamp{800000000.25}};
    BalanceHistory history{defaults, clock};

    // Stores `count` USD samples one second apart, ending at the clock's time.
    void seed(std::size_t count, double spacing = 1.0) {
        std::vector<BalancePoint> points;
        for (std::size_t i = 0; i < count; ++i) {
            const double age = spacing * static_cast<double>(count - i);
            points.push_back(
                {clock.now().plusSeconds(-age), "USD", Decimal::fromInteger(static_cast<std::int64_t>(i))});
        }
        defaults.setData("balanceHistory", HistoryCodec::encode(points));
    }
};

TEST_F(BalanceHistoryTest, OneRefreshAppendsOneSamplePerCurrencyAtOneMoment) {
    history.recordHistory(response({{"USD", "12.50"}, {"CNY", "not a number"}}));

    const std::vector<BalancePoint> expected = {
        {clock.now(), "USD", Decimal::parse("12.5").value()},
        {clock.now(), "CNY", Decimal()},
    };
    EXPECT_EQ(history.allHistory(), expected);
    EXPECT_EQ(defaults.dataValue("balanceHistory"),
              R"([{"timestamp":800000000.25,"currency":"USD","balance":12.5},)"
              R"({"timestamp":800000000.25,"currency":"CNY","balance":0}])");
}

TEST_F(BalanceHistoryTest, CountBoundKeepsExactlyTheNewest400) {
    struct Case {
        std::size_t stored;
        std::size_t after;
        std::int64_t oldestBalance;
    };
    const Case cases[] = {{398, 399, 0}, {399, 400, 0}, {400, 400, 1}, {450, 400, 51}};
    for (const Case& c : cases) {
        seed(c.stored);
        history.recordHistory(response({{"USD", "-1"}}));
        const auto all = history.allHistory();
        ASSERT_EQ(all.size(), c.after) << c.stored;
        EXPECT_EQ(all.front().balance, Decimal::fromInteger(c.oldestBalance)) << c.stored;
        EXPECT_EQ(all.back().balance, Decimal::fromInteger(-1)) << c.stored;
    }
}

TEST_F(BalanceHistoryTest, AgeBoundKeepsASampleExactlySevenDaysOld) {
    const Timestamp now = clock.now();
    const std::vector<BalancePoint> points = {
        {now.plusSeconds(-604800.5), "USD", Decimal::fromInteger(1)},
        {now.plusSeconds(-604800.0), "USD", Decimal::fromInteger(2)},
        {now.plusSeconds(-10.0), "CNY", Decimal::fromInteger(3)},
    };
    defaults.setData("balanceHistory", HistoryCodec::encode(points));

    history.recordHistory(response({{"USD", "4"}}));

    const auto all = history.allHistory();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].balance, Decimal::fromInteger(2));
    EXPECT_EQ(all[1].currency, "CNY");
    EXPECT_EQ(all[2].balance, Decimal::fromInteger(4));
}

TEST_F(BalanceHistoryTest, SeriesIsTheNewest48OfOneExactCurrency) {
    struct Case {
        std::size_t stored;
        std::size_t returned;
    };
    for (const Case& c : {Case{0, 0}, Case{1, 1}, Case{48, 48}, Case{49, 48}, Case{400, 48}}) {
        store.remove("balanceHistory");
        seed(c.stored);
        const auto series = history.history("USD");
        ASSERT_EQ(series.size(), c.returned) << c.stored;
        if (!series.empty()) {
            EXPECT_EQ(series.back().balance, Decimal::fromInteger(static_cast<std::int64_t>(c.stored) - 1));
            EXPECT_EQ(series.front().balance,
                      Decimal::fromInteger(static_cast<std::int64_t>(c.stored - c.returned)));
        }
    }
    EXPECT_TRUE(history.history("usd").empty());
    EXPECT_TRUE(history.history("CNY").empty());
}

TEST_F(BalanceHistoryTest, AnUnreadableStoredValueReadsEmptyAndIsReplacedByTheNextRefresh) {
    const SettingValue corrupt[] = {
        SettingBytes{R"([{"timestamp":1,"currency":"USD"}])"}, // a sample without balance
        SettingBytes{"\xff\xfe"},
        SettingValue{std::string("[]")}, // text, not data
        SettingValue{std::int64_t{3}},
    };
    for (const SettingValue& value : corrupt) {
        store.setValue("balanceHistory", value);
        EXPECT_TRUE(history.allHistory().empty());
        EXPECT_TRUE(history.history("USD").empty());
        history.recordHistory(response({{"USD", "5"}}));
        EXPECT_EQ(history.allHistory(),
                  (std::vector<BalancePoint>{{clock.now(), "USD", Decimal::fromInteger(5)}}));
    }
}

TEST_F(BalanceHistoryTest, ClearRemovesOnlyTheHistory) {
    defaults.setString("dayKey", "2026-11-22");
    history.recordHistory(response({{"USD", "5"}}));
    history.clear();
    EXPECT_FALSE(defaults.hasValue("balanceHistory"));
    EXPECT_EQ(defaults.stringValue("dayKey"), "2026-11-22");
}

} // namespace
} // namespace quorvane
