#include "values/Decimal.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {
namespace {

Decimal dec(const std::string& text) {
    return Decimal::parseExact(text).value();
}

std::string parsedText(std::string_view text) {
    const std::optional<Decimal> value = Decimal::parse(text);
    return value ? value->toString() : "nothing";
}

std::string exactText(std::string_view text) {
    const std::optional<Decimal> value = Decimal::parseExact(text);
    return value ? value->toString() : "nothing";
}

std::string quotientText(const std::string& dividend, const std::string& divisor) {
    const std::optional<Decimal> value = dec(dividend).dividedBy(dec(divisor));
    return value ? value->toString() : "nothing";
}

const std::string kThirtyEightNines(38, '9');

TEST(DecimalTest, TrailingZerosDoNotChangeTheValueOrItsText) {
    EXPECT_EQ(dec("110.00"), dec("110"));
    EXPECT_EQ(dec("110.00"), Decimal::fromInteger(110));
    EXPECT_EQ(dec("110.00").toString(), "110");
    EXPECT_EQ(dec("1200").toString(), "1200");
    EXPECT_EQ(dec("-0.0037").toString(), "-0.0037");
    EXPECT_EQ(dec("-0.00"), Decimal{});
    EXPECT_FALSE(dec("-0.00").isNegative());
    EXPECT_EQ(dec("-0.00").toString(), "0");
    EXPECT_EQ(Decimal{}.toString(), "0");
}

TEST(DecimalTest, DecimalFractionsAddAndSubtractExactly) {
    EXPECT_EQ(dec("0.1").toString(), "0.1");
    EXPECT_EQ(dec("0.1") + dec("0.2"), dec("0.3"));
    EXPECT_EQ((dec("10.00") - dec("7.5")).toString(), "2.5");
    EXPECT_EQ((dec("7.5") - dec("10")).toString(), "-2.5");
    EXPECT_EQ((dec("-7.5") + dec("7.50")).toString(), "0");
    EXPECT_FALSE((dec("-7.5") + dec("7.50")).isNegative());
    EXPECT_EQ((dec("-7.5") + dec("10")).toString(), "2.5");
    EXPECT_EQ((dec("0") - dec("0.0037")).toString(), "-0.0037");
    EXPECT_EQ((dec("1e100") + dec("1e-100")).toString(), "1" + std::string(100, '0'));
}

TEST(DecimalTest, FromIntegerCoversTheWholeRange) {
    EXPECT_EQ(Decimal::fromInteger(std::numeric_limits<std::int64_t>::min()).toString(),
              "-9223372036854775808");
    EXPECT_EQ(Decimal::fromInteger(std::numeric_limits<std::int64_t>::max()).toString(),
              "9223372036854775807");
}

struct ParseCase {
    std::string text;
    std::string parsed;
    std::string exact;
};

TEST(DecimalTest, ParseReadsTheLongestNumericPrefixAndParseExactOnlyAWholeNumber) {
    const std::vector<ParseCase> cases = {
        {"12.5", "12.5", "12.5"},
        {"-0.0037", "-0.0037", "-0.0037"},
        {"+3", "3", "3"},
        {".5", "0.5", "0.5"},
        {"5.", "5", "5"},
        {"007.50", "7.5", "7.5"},
        {"  \t12.5", "12.5", "nothing"},
        {"12.5  ", "12.5", "nothing"},
        {"1,5", "1", "nothing"},
        {"12abc", "12", "nothing"},
        {"1.2.3", "1.2", "nothing"},
        {"1e3", "1000", "1000"},
        {"1E-3", "0.001", "0.001"},
        {"2.5e+2", "250", "250"},
        {"12e", "12", "nothing"},
        {"12e+x", "12", "nothing"},
        {"", "nothing", "nothing"},
        {"abc", "nothing", "nothing"},
        {"-.e1", "nothing", "nothing"},
        {"\xff"
         "1",
         "nothing", "nothing"},
        {"0e-999999", "0", "0"},
        {"1e127", "1" + std::string(127, '0'), "1" + std::string(127, '0')},
        {"10e126", "1" + std::string(127, '0'), "1" + std::string(127, '0')},
        {"1e128", "nothing", "nothing"},
        {"1e-128", "0." + std::string(127, '0') + "1", "0." + std::string(127, '0') + "1"},
        {"1000e-131", "0." + std::string(127, '0') + "1", "0." + std::string(127, '0') + "1"},
        {"1e-129", "nothing", "nothing"},
        {"1e99999999999999999999", "nothing", "nothing"},
        {"1e-99999999999999999999", "nothing", "nothing"},
    };
    for (const ParseCase& c : cases) {
        EXPECT_EQ(parsedText(c.text), c.parsed) << "parse of \"" << c.text << "\"";
        EXPECT_EQ(exactText(c.text), c.exact) << "parseExact of \"" << c.text << "\"";
    }
}

TEST(DecimalTest, MoreThanThirtyEightDigitsRoundHalfEven) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"12345678901234567890123456789012345678", "12345678901234567890123456789012345678"},
        {"123456789012345678901234567890123456785", "123456789012345678901234567890123456780"},
        {"123456789012345678901234567890123456775", "123456789012345678901234567890123456780"},
        {"1234567890123456789012345678901234567850001", "1234567890123456789012345678901234567900000"},
        {"0.123456789012345678901234567890123456785", "0.12345678901234567890123456789012345678"},
        {"-0.123456789012345678901234567890123456786", "-0.12345678901234567890123456789012345679"},
        {kThirtyEightNines + "9", "1" + std::string(39, '0')},
        {kThirtyEightNines + ".5", "1" + std::string(38, '0')},
        {"0." + std::string(200, '0') + "1" + std::string(40, '0'), "nothing"},
        // Rounding carries the exponent out of range.
        {kThirtyEightNines + "9e89", "nothing"},
        {kThirtyEightNines + "4e89", kThirtyEightNines + std::string(90, '0')},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(exactText(text), expected) << text;
    }
}

TEST(DecimalTest, SumsBeyondThirtyEightDigitsRoundHalfEven) {
    const std::string big = "12345678901234567890123456789012345678";
    EXPECT_EQ((dec(big) + dec("0.5")).toString(), big);
    EXPECT_EQ((dec(big) + dec("0.51")).toString(), "12345678901234567890123456789012345679");
    EXPECT_EQ((dec("12345678901234567890123456789012345677") + dec("0.5")).toString(), big);
    EXPECT_EQ((dec(kThirtyEightNines) + dec("1")).toString(), "1" + std::string(38, '0'));
    EXPECT_EQ((dec("1") - dec("5e-39")).toString(), "1");
    EXPECT_EQ((dec("1") - dec("5e-38")).toString(), "0.99999999999999999999999999999999999995");
    // Past the largest value the sum stays at it.
    const Decimal largest = dec(kThirtyEightNines + "e127");
    EXPECT_EQ(largest + largest, largest);
    EXPECT_EQ(largest.negated() - largest, largest.negated());
}

TEST(DecimalTest, DivisionKeepsThirtyEightSignificantDigits) {
    const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
        {"1", "3", "0.33333333333333333333333333333333333333"},
        {"2", "3", "0.66666666666666666666666666666666666667"},
        {"-1", "3", "-0.33333333333333333333333333333333333333"},
        {"22", "7", "3.1428571428571428571428571428571428571"},
        {"-1", "7e-5", "-14285.714285714285714285714285714285714"},
        {"10", "4", "2.5"},
        {"110.00", "1.1", "100"},
        {"0", "5", "0"},
        {"5", "0", "nothing"},
        // A 38-digit divisor: the remainder times ten would not fit 128 bits.
        {"99999999999999999999999999999999999998", kThirtyEightNines,
         "0.99999999999999999999999999999999999999"},
        {"1", kThirtyEightNines, "0." + std::string(37, '0') + "1"},
        {kThirtyEightNines, "0.5", "2" + std::string(38, '0')},
        {"1e-128", "1e127", "nothing"},
        {"1e127", "0.1", "nothing"},
    };
    for (const auto& [dividend, divisor, expected] : cases) {
        EXPECT_EQ(quotientText(dividend, divisor), expected) << dividend << " / " << divisor;
    }
}

TEST(DecimalTest, OrderingFollowsValueAcrossExponentsAndSigns) {
    const std::vector<std::string> ascending = {
        "-1e127", "-100", "-2.5",    "-0.0037", "0",     "1e-128", "0.0037",
        "0.1",    "2.5",  "2.50001", "10",      "99.99", "100",    "1" + std::string(38, '0'),
        "1e127",
    };
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            const Decimal a = dec(ascending[i]);
            const Decimal b = dec(ascending[j]);
            EXPECT_EQ(a <=> b, i <=> j) << ascending[i] << " vs " << ascending[j];
        }
    }
    EXPECT_EQ(dec("2.50") <=> dec("2.5"), std::strong_ordering::equal);
}

TEST(DecimalTest, MagnitudeAndNegation) {
    EXPECT_EQ(dec("-2.5").magnitude().toString(), "2.5");
    EXPECT_EQ(dec("2.5").negated().toString(), "-2.5");
    EXPECT_FALSE(Decimal{}.negated().isNegative());
    EXPECT_TRUE(dec("-0.0001").isNegative());
    EXPECT_TRUE(Decimal{}.isZero());
}

TEST(DecimalTest, ToDoubleIsTheNearestDouble) {
    const std::vector<std::pair<std::string, double>> cases = {
        {"0.1", 0.1},
        {"123456789.123456789", 123456789.123456789},
        {"9007199254740993", 9007199254740992.0},
        {"1e127", 1e127},
        {"1e-128", 1e-128},
        {"12345678901234567890123456789012345678", 12345678901234567890123456789012345678.0},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(dec(text).toDouble(), expected) << text;
    }
}

TEST(DecimalTest, ToStringReadsBackToTheSameValue) {
    const std::vector<std::string> texts = {
        "0",
        "12345678901234567890123456789012345678",
        "0.12345678901234567890123456789012345678",
        "1234567890.1234567890123456789012345678",
        "-1" + std::string(127, '0'),
        "0." + std::string(127, '0') + "1",
        kThirtyEightNines + std::string(127, '0'),
    };
    for (const std::string& text : texts) {
        const Decimal value = dec(text);
        EXPECT_EQ(value.toString(), text);
        EXPECT_EQ(Decimal::parseExact(value.toString()), value) << text;
        EXPECT_EQ(text.find_first_of("eE,"), std::string::npos);
    }
}

} // namespace
} // namespace quorvane
