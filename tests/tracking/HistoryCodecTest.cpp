#include "tracking/HistoryCodec.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace quorvane {
namespace {

BalancePoint point(double seconds, const char* currency, const char* balance) {
    return BalancePoint{Timestamp{seconds}, currency, Decimal::parseExact(balance).value()};
}

TEST(HistoryCodecTest, EncodesCompactlyWithKeysInOrder) {
    EXPECT_EQ(HistoryCodec::encode({}), "[]");
    EXPECT_EQ(
        HistoryCodec::encode({point(785000000.123456, "USD", "110.00"), point(785000000, "CNY", "-0.0037")}),
        R"([{"timestamp":785000000.123456,"currency":"USD","balance":110},)"
        R"({"timestamp":785000000,"currency":"CNY","balance":-0.0037}])");
    const std::vector<std::pair<double, std::string>> timestamps = {
        {785000000, "785000000"}, {0.0001, "0.0001"},    {0.00001, "1e-05"},
        {1e16, "1e+16"},          {-2.5e20, "-2.5e+20"}, {9999999999999998, "9999999999999998"},
    };
    for (const auto& [seconds, text] : timestamps) {
        EXPECT_EQ(HistoryCodec::encode({point(seconds, "USD", "1")}),
                  R"([{"timestamp":)" + text + R"(,"currency":"USD","balance":1}])");
    }
    EXPECT_EQ(HistoryCodec::encode({point(-0.5, "a/b\"", "1e127")}),
              R"([{"timestamp":-0.5,"currency":"a\/b\"","balance":1)" + std::string(127, '0') + "}]");
}

TEST(HistoryCodecTest, RoundTripsExactly) {
    const std::vector<BalancePoint> points = {
        point(785000000.123456, "USD", "12345678901234567890.123456789012345678"),
        point(785000000.1 + 0.2, "CNY", "0.00000000000000000000000000000000000001"),
        point(std::numeric_limits<double>::max(), "USD", "-99999999999999999999999999999999999999e127"),
        point(std::numeric_limits<double>::denorm_min(), "\xF0\x9F\x90\x8B", "0"),
        point(0.1, "", "1e-128"),
    };
    const std::string encoded = HistoryCodec::encode(points);
    const std::optional<std::vector<BalancePoint>> decoded = HistoryCodec::decode(encoded);
    ASSERT_TRUE(decoded) << encoded;
    EXPECT_EQ(*decoded, points);
    EXPECT_EQ(HistoryCodec::encode(*decoded), encoded);
}

TEST(HistoryCodecTest, LeavesOutSamplesWithoutAFiniteTime) {
    const std::vector<BalancePoint> points = {point(std::numeric_limits<double>::quiet_NaN(), "USD", "1"),
                                              point(10, "USD", "2"),
                                              point(std::numeric_limits<double>::infinity(), "USD", "3")};
    EXPECT_EQ(HistoryCodec::encode(points), R"([{"timestamp":10,"currency":"USD","balance":2}])");
}

TEST(HistoryCodecTest, DecodesKeysInAnyOrderAndIgnoresOthers) {
    const std::optional<std::vector<BalancePoint>> decoded = HistoryCodec::decode(
        R"( [ {"balance": 2.50, "extra": [1, {"a": null}], "currency": "CNY", "timestamp": 7.5E2},)"
        R"({"currency":"USD","timestamp":-1,"balance":1e3} ] )");
    ASSERT_TRUE(decoded);
    EXPECT_EQ(*decoded, (std::vector<BalancePoint>{point(750, "CNY", "2.5"), point(-1, "USD", "1000")}));
    EXPECT_EQ(HistoryCodec::decode("[]"), std::vector<BalancePoint>{});
}

TEST(HistoryCodecTest, AnyFaultReadsAsNothing) {
    const std::string good = R"({"timestamp":1,"currency":"USD","balance":1})";
    const std::vector<std::string> cases = {
        "",
        "{}",
        "[" + good + ",",
        "[" + good + "]x",
        "[" + good + ",1]",
        R"([{"currency":"USD","balance":1}])",
        R"([{"timestamp":1,"balance":1}])",
        R"([{"timestamp":1,"currency":"USD"}])",
        R"([{"timestamp":"1","currency":"USD","balance":1}])",
        R"([{"timestamp":1,"currency":5,"balance":1}])",
        R"([{"timestamp":1,"currency":"USD","balance":"1"}])",
        R"([{"timestamp":1e400,"currency":"USD","balance":1}])",
        R"([{"timestamp":1,"currency":"USD","balance":1e128}])",
        R"([{"timestamp":1,"currency":"USD","balance":1e-129}])",
        "[{\"timestamp\":1,\"currency\":\"US\xFF\",\"balance\":1}]",
        "[" + good + "," + R"({"timestamp":2,"currency":"USD"})" + "]",
    };
    for (const std::string& bytes : cases) {
        EXPECT_EQ(HistoryCodec::decode(bytes), std::nullopt) << bytes;
    }
}

} // namespace
} // namespace quorvane
