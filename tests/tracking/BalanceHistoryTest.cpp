#include "tracking/BalanceHistory.h"

#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsStore.h"
#include "tracking/HistoryCodec.h"

#include <gtest/gtest.h>

#include <limits>

namespace quorvane {
namespace {

BalanceResponse response(const std::string& currency, const std::string& total) {
    return BalanceResponse{true, {BalanceInfo{currency, total, "0", total}}};
}

class BalanceHistoryTest : public ::testing::Test {
protected:
    MemorySettingsStore store;
    Defaults defaults{store};
    FakeClock clock{Timestamp{800000000.25}};
    BalanceHistory history{defaults, clock};

    // Stores `count` USD samples of balances 0, 1, 2, ... one second apart, ending at the clock's time.
    void seed(std::size_t count) {
        std::vector<BalancePoint> points;
        for (std::size_t i = 0; i < count; ++i) {
            points.push_back({clock.now().plusSeconds(static_cast<double>(i) - static_cast<double>(count)),
                              "USD", Decimal::fromInteger(static_cast<std::int64_t>(i))});
        }
        defaults.setData("balanceHistory", HistoryCodec::encode(points));
    }
};

TEST_F(BalanceHistoryTest, ItKeepsTheNewest400SamplesOfTheLastSevenDays) {
    const std::tuple<std::size_t, std::size_t, std::int64_t> cases[] = {
        {399, 400, 0}, {400, 400, 1}, {450, 400, 51}};
    for (const auto& [stored, after, oldest] : cases) {
        seed(stored);
        history.recordHistory(response("USD", "-1"));
        const auto all = history.allHistory();
        ASSERT_EQ(all.size(), after) << stored;
        EXPECT_EQ(all.front().balance, Decimal::fromInteger(oldest)) << stored;
        EXPECT_EQ(all.back().balance, Decimal::fromInteger(-1)) << stored;
    }

    const Timestamp now = clock.now();
    defaults.setData("balanceHistory", HistoryCodec::encode({
                                           {now.plusSeconds(-604800.5), "USD", Decimal::fromInteger(1)},
                                           {now.plusSeconds(-604800.0), "USD", Decimal::fromInteger(2)},
                                           {now.plusSeconds(-10.0), "CNY", Decimal::fromInteger(3)},
                                       }));
    history.recordHistory(response("USD", "4"));
    const auto all = history.allHistory();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].balance, Decimal::fromInteger(2)) << "exactly seven days old is kept";
    EXPECT_EQ(all[1].currency, "CNY");
    EXPECT_EQ(all[2].balance, Decimal::fromInteger(4));
}

TEST_F(BalanceHistoryTest, SeriesIsTheNewest48OfOneExactCurrency) {
    for (const std::int64_t stored : {48, 49}) {
        seed(static_cast<std::size_t>(stored));
        const auto series = history.history("USD");
        ASSERT_EQ(series.size(), 48u) << stored;
        EXPECT_EQ(series.front().balance, Decimal::fromInteger(stored - 48));
        EXPECT_EQ(series.back().balance, Decimal::fromInteger(stored - 1));
    }
    EXPECT_TRUE(history.history("usd").empty());
    EXPECT_TRUE(history.history("CNY").empty());
}

BalancePoint point(double seconds, const char* currency, const char* balance) {
    return BalancePoint{Timestamp{seconds}, currency, Decimal::parseExact(balance).value()};
}

TEST(HistoryCodecTest, EncodesCompactlyWithKeysInOrderAndOnlyFiniteTimes) {
    EXPECT_EQ(HistoryCodec::encode({}), "[]");
    EXPECT_EQ(HistoryCodec::encode({point(785000000.123456, "USD", "110.00"),
                                    point(std::numeric_limits<double>::quiet_NaN(), "USD", "1"),
                                    point(785000000, "CNY", "-0.0037"),
                                    point(std::numeric_limits<double>::infinity(), "USD", "3")}),
              R"([{"timestamp":785000000.123456,"currency":"USD","balance":110},)"
              R"({"timestamp":785000000,"currency":"CNY","balance":-0.0037}])");
    // Plain digits for everyday magnitudes, an exponent below 1e-4 and from 1e16.
    const std::vector<std::pair<double, std::string>> timestamps = {
        {0, "0"},        {0.0001, "0.0001"},    {0.00001, "1e-05"},
        {1e16, "1e+16"}, {-2.5e20, "-2.5e+20"}, {9999999999999998, "9999999999999998"},
    };
    for (const auto& [seconds, text] : timestamps) {
        EXPECT_EQ(HistoryCodec::encode({point(seconds, "USD", "1")}),
                  R"([{"timestamp":)" + text + R"(,"currency":"USD","balance":1}])");
    }
}

TEST(HistoryCodecTest, AnyFaultReadsAsNothing) {
    const std::string good = R"({"timestamp":1,"currency":"USD","balance":1})";
    const std::vector<std::string> cases = {
        "",
        "{}",
        "[" + good + "]x",
        "[" + good + ",1]",
        R"([{"currency":"USD","balance":1}])",
        R"([{"timestamp":1,"balance":1}])",
        R"([{"timestamp":"1","currency":"USD","balance":1}])",
        R"([{"timestamp":1,"currency":"USD","balance":"1"}])",
        R"([{"timestamp":1e400,"currency":"USD","balance":1}])",
        R"([{"timestamp":1,"currency":"USD","balance":1e128}])",
        R"([{"timestamp":1,"currency":"USD","balance":1e-129}])",
        "[" + good + "," + R"({"timestamp":2,"currency":"USD"})" + "]",
    };
    for (const std::string& bytes : cases) {
        EXPECT_EQ(HistoryCodec::decode(bytes), std::nullopt) << bytes;
    }
}

} // namespace
} // namespace quorvane
