#include "chart/ChartTexts.h"

#include "icu/IcuFormatter.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvane {
namespace {

// 2023-11-14 22:13:20 UTC; later samples follow at one-hour steps.
constexpr Timestamp kFirstSample = Timestamp::fromUnixSeconds(1700000000);

std::vector<BalancePoint> hourly(const std::string& currency, const std::vector<const char*>& balances) {
    std::vector<BalancePoint> points;
    for (const char* balance : balances) {
        const auto hours = static_cast<double>(points.size());
        points.push_back({kFirstSample.plusSeconds(hours * 3600), currency, Decimal::parse(balance).value()});
    }
    return points;
}

// A locale whose number formatter yields no text.
class SilentFormatter : public Formatter {
public:
    std::optional<std::string> currency(const Decimal&, const std::string&, int) const override { return {}; }
    std::optional<std::string> decimal(const Decimal&, int) const override { return {}; }
    std::string dayKey(Timestamp, const std::string&) const override { return {}; }
    std::string dateTime(Timestamp, DateStyle, TimeStyle, const std::string&) const override { return {}; }
    std::string relativeTime(Timestamp, Timestamp) const override { return {}; }
};

TEST(ChartTextsTest, TooltipShowsBalanceTimeAndChangeFromThePreviousSample) {
    struct Case {
        std::vector<const char*> balances;
        std::int64_t index;
        const char* text;
    };
    const Case cases[] = {
        {{"10", "9.5"}, 0, "CNY balance: 10\nTime: 11/14/23, 10:13:20\u202fPM"},
        {{"10", "9.5"}, 1, "CNY balance: 9.5\nTime: 11/14/23, 11:13:20\u202fPM\nUsed since previous: 0.5"},
        {{"9.5", "10"}, 1, "CNY balance: 10\nTime: 11/14/23, 11:13:20\u202fPM\nBalance increased: 0.5"},
        {{"10", "10.00"}, 1, "CNY balance: 10\nTime: 11/14/23, 11:13:20\u202fPM\nNo change since previous"},
        {{"20", "10", "9.5", "1234.56789"},
         3,
         "CNY balance: 1,234.5679\nTime: 11/15/23, 1:13:20\u202fAM\nBalance increased: 1,225.0679"},
    };
    const IcuFormatter formatter("en_US");
    const ChartTexts texts(formatter, "UTC");
    for (const Case& c : cases) {
        EXPECT_EQ(texts.tooltipText(hourly("CNY", c.balances), c.index), c.text);
    }
    const std::vector<BalancePoint> three = hourly("USD", {"3", "2", "1"});
    EXPECT_EQ(texts.tooltipText(three, std::nullopt), std::nullopt);
    EXPECT_EQ(texts.tooltipText(three, -1), std::nullopt);
    EXPECT_EQ(texts.tooltipText(three, 3), std::nullopt);
}

TEST(ChartTextsTest, BubbleLineIsShortTimeAndAmountOnly) {
    const IcuFormatter formatter("en_US");
    const ChartTexts texts(formatter, "UTC");
    EXPECT_EQ(texts.compactTooltipText(hourly("USD", {"2.50"})[0]), "10:13\u202fPM  2.5");
    EXPECT_EQ(ChartTexts(formatter, "Asia/Tokyo").compactTooltipText(hourly("USD", {"7"})[0]),
              "7:13\u202fAM  7");
}

TEST(ChartTextsTest, AmountsKeepAtMostFourFractionDigits) {
    const std::pair<const char*, const char*> cases[] = {
        {"2.50", "2.5"},       {"1.23456", "1.2346"}, {"1.23445", "1.2344"},
        {"1234.5", "1,234.5"}, {"0.00004", "0"},      {"-0.5", "-0.5"},
    };
    const IcuFormatter formatter("en_US");
    const ChartTexts texts(formatter, "UTC");
    const SilentFormatter silent;
    const ChartTexts fallback(silent, "UTC");
    for (const auto& [amount, text] : cases) {
        EXPECT_EQ(texts.formatDecimal(Decimal::parse(amount).value()), text);
    }
    EXPECT_EQ(fallback.formatDecimal(Decimal::parse("1234.56789").value()), "1234.56789");
    EXPECT_EQ(fallback.formatDecimal(Decimal::parse("2.50").value()), "2.5");
}

} // namespace
} // namespace quorvane
