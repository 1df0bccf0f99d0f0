#include "values/Decimal.h"
#include "values/DoubleText.h"
#include "values/Utf8.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace quorvane {
namespace {

Decimal dec(const std::string& text) {
    return Decimal::parseExact(text).value();
}

std::string textOf(const std::optional<Decimal>& value) {
    return value ? value->toString() : "nothing";
}

const std::string kNines(38, '9');
const std::string kBig = "12345678901234567890123456789012345678";
const std::string kLargest = kNines + "e127";

TEST(DecimalTest, ParseReadsTheLongestNumericPrefixAndParseExactOnlyAWholeNumber) {
    const std::string tenToTheMinus128 = "0." + std::string(127, '0') + "1";
    const std::string tenToThe127 = "1" + std::string(127, '0');
    const struct {
        std::string text;
        std::string parsed;
        std::string exact;
    } cases[] = {
        {"-0.0037", "-0.0037", "-0.0037"},
        {"+3", "3", "3"},
        {".5", "0.5", "0.5"},
        {"  \t12.5", "12.5", "nothing"},
        {"1.2.3", "1.2", "nothing"},
        {"1E-3", "0.001", "0.001"},
        {"2.5e+2", "250", "250"},
        {"12e+x", "12", "nothing"},
        {"", "nothing", "nothing"},
        {"-.e1", "nothing", "nothing"},
        {"0e-999999", "0", "0"},
        {"10e126", tenToThe127, tenToThe127},
        {"1e128", "nothing", "nothing"},
        {"1000e-131", tenToTheMinus128, tenToTheMinus128},
        {"1e-129", "nothing", "nothing"},
        {"1e99999999999999999999", "nothing", "nothing"},
        // Beyond 38 digits the text rounds half-even, carrying into the exponent.
        {kBig + "5", kBig + "0", kBig + "0"},
        {"123456789012345678901234567890123456775", kBig + "0", kBig + "0"},
        {"0." + kBig + "50001", "0.12345678901234567890123456789012345679",
         "0.12345678901234567890123456789012345679"},
        {kNines + ".5", "1" + std::string(38, '0'), "1" + std::string(38, '0')},
        {kNines + "9e89", "nothing", "nothing"},
        {kNines + "4e89", kNines + std::string(90, '0'), kNines + std::string(90, '0')},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(textOf(Decimal::parse(c.text)), c.parsed) << "parse of \"" << c.text << "\"";
        EXPECT_EQ(textOf(Decimal::parseExact(c.text)), c.exact) << "parseExact of \"" << c.text << "\"";
    }
}

TEST(DecimalTest, SumsAreExactAndQuotientsKeepThirtyEightDigitsRoundingHalfEven) {
    const struct {
        std::string a;
        char operation;
        std::string b;
        std::string result;
    } cases[] = {
        {"0.1", '+', "0.2", "0.3"},
        {"7.5", '-', "10", "-2.5"},
        {"-7.5", '+', "7.50", "0"},
        {"0", '-', "0.0037", "-0.0037"},
        {"1e100", '+', "1e-100", "1" + std::string(100, '0')},
        {kBig, '+', "0.5", kBig},
        {kBig, '+', "0.51", "12345678901234567890123456789012345679"},
        {"12345678901234567890123456789012345677", '+', "0.5", kBig},
        {kNines, '+', "1", "1" + std::string(38, '0')},
        {"1", '-', "5e-39", "1"},
        {"1", '-', "5e-38", "0.99999999999999999999999999999999999995"},
        // Past the largest value a sum stays at it.
        {kLargest, '+', kLargest, kNines + std::string(127, '0')},
        {"-" + kLargest, '-', kLargest, "-" + kNines + std::string(127, '0')},
        {"2", '/', "3", "0.66666666666666666666666666666666666667"},
        {"-22", '/', "7", "-3.1428571428571428571428571428571428571"},
        {"-1", '/', "7e-5", "-14285.714285714285714285714285714285714"},
        {"110.00", '/', "4.4", "25"},
        {"0", '/', "5", "0"},
        {"5", '/', "0", "nothing"},
        // A 38-digit divisor: the remainder times ten would not fit 128 bits.
        {"99999999999999999999999999999999999998", '/', kNines, "0.99999999999999999999999999999999999999"},
        {"1", '/', kNines, "0." + std::string(37, '0') + "1"},
        {"1e-128", '/', "1e127", "nothing"},
        {"1e127", '/', "0.1", "nothing"},
    };
    for (const auto& c : cases) {
        const Decimal a = dec(c.a);
        const Decimal b = dec(c.b);
        const std::optional<Decimal> result = c.operation == '/'   ? a.dividedBy(b)
                                              : c.operation == '+' ? a + b
                                                                   : a - b;
        EXPECT_EQ(textOf(result), c.result) << c.a << " " << c.operation << " " << c.b;
    }
}

// Both the character-conversion path and the stream path must give the same answers.
using Parse = std::optional<double> (*)(std::string_view);
using Shortest = std::string (*)(double, DoubleText::Notation);
const std::pair<const char*, std::pair<Parse, Shortest>> kPaths[] = {
    {"platform", {&DoubleText::parse, &DoubleText::shortest}},
    {"streams", {&DoubleText::parseWithStreams, &DoubleText::shortestWithStreams}},
};

TEST(DoubleTextTest, ParsesWholeNumbersOnly) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    const std::pair<const char*, std::optional<double>> cases[] = {
        {"-0.5", -0.5},
        {"2.5E-3", 0.0025},
        {"785000000.123456", 785000000.123456},
        {".5", 0.5},
        {"inf", kInf},
        {"-Infinity", -kInf},
        {"4.9e-324", 4.9406564584124654e-324},
        {"0e-999", 0.0},
        {"", std::nullopt},
        {"-", std::nullopt},
        {" 12", std::nullopt},
        {"12 ", std::nullopt},
        {"+12", std::nullopt},
        {"0x10", std::nullopt},
        {"1e", std::nullopt},
        {"1e400", std::nullopt},
        {"1e-400", std::nullopt},
        {"12abc", std::nullopt},
    };
    for (const auto& [name, path] : kPaths) {
        for (const auto& [text, value] : cases) {
            EXPECT_EQ(path.first(text), value) << name << " " << text;
        }
        EXPECT_TRUE(std::isnan(path.first("nan").value_or(0.0))) << name;
    }
}

TEST(DoubleTextTest, WritesTheShortestTextThatReadsBack) {
    using N = DoubleText::Notation;
    const struct {
        double value;
        N notation;
        const char* text;
    } cases[] = {
        {785000000.0, N::Fixed, "785000000"},
        {785000000.123456, N::Fixed, "785000000.123456"},
        {-2.5, N::Fixed, "-2.5"},
        {1e19, N::Fixed, "10000000000000000000"},
        {1.5e-7, N::Scientific, "1.5e-07"},
        {30.7, N::General, "30.7"},
        {1e300, N::General, "1e+300"},
        {-std::numeric_limits<double>::infinity(), N::Fixed, "-inf"},
        {std::nan(""), N::Scientific, "nan"},
    };
    const double roundTrips[] = {785000000.123456, 1.0 / 3.0, 5e-324, 1.7976931348623157e308, -0.0001};
    for (const auto& [name, path] : kPaths) {
        for (const auto& c : cases) {
            EXPECT_EQ(path.second(c.value, c.notation), c.text) << name << " " << c.text;
        }
        for (double value : roundTrips) {
            for (auto notation : {N::Fixed, N::Scientific, N::General}) {
                const std::string text = path.second(value, notation);
                EXPECT_EQ(path.first(text), value) << name << " " << text;
            }
        }
    }
}

TEST(Utf8Test, AcceptsOnlyWellFormedUtf8) {
    const std::pair<std::string, bool> cases[] = {
        {"", true},
        {"\xF0\x9F\x90\x8B whale", true},
        {"\xEF\xBF\xBF", true},         // U+FFFF
        {"\xF4\x8F\xBF\xBF", true},     // U+10FFFF
        {std::string("a\0b", 3), true}, // NUL is a character
        {"\xFF", false},                // never a lead byte
        {"\xC0\xAF", false},            // overlong slash
        {"\xE0\x80\xAF", false},        // overlong
        {"\xED\xA0\x80", false},        // a surrogate
        {"\xF4\x90\x80\x80", false},    // above U+10FFFF
        {"\x80", false},                // a lone continuation
        {"ok\xE2\x82", false},          // truncated at the end
    };
    for (const auto& [bytes, valid] : cases) {
        EXPECT_EQ(isValidUtf8(bytes), valid) << testing::PrintToString(bytes);
    }
}

} // namespace
} // namespace quorvane
