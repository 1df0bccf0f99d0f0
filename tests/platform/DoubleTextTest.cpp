#include "values/DoubleText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quorvane {
namespace {

using Parse = std::optional<double> (*)(std::string_view);
using Shortest = std::string (*)(double, DoubleText::Notation);

// Both the character-conversion path and the stream path must give the same answers.
const std::pair<const char*, std::pair<Parse, Shortest>> kPaths[] = {
    {"platform", {&DoubleText::parse, &DoubleText::shortest}},
    {"streams", {&DoubleText::parseWithStreams, &DoubleText::shortestWithStreams}},
};

TEST(DoubleTextTest, ParsesWholeNumbersOnly) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    struct Case {
        const char* text;
        std::optional<double> value;
    };
    const Case cases[] = {
        {"12", 12.0},
        {"-0.5", -0.5},
        {"30.7", 30.7},
        {"1e3", 1000.0},
        {"2.5E-3", 0.0025},
        {"785000000.123456", 785000000.123456},
        {"0.1", 0.1},
        {".5", 0.5},
        {"inf", kInf},
        {"-Infinity", -kInf},
        {"", std::nullopt},
        {"-", std::nullopt},
        {"1,5", std::nullopt},
        {" 12", std::nullopt},
        {"12 ", std::nullopt},
        {"+12", std::nullopt},
        {"0x10", std::nullopt},
        {"1e", std::nullopt},
        {"1e400", std::nullopt},
        {"1e-400", std::nullopt},
        {"-2e-324", std::nullopt},
        {"4.9e-324", 4.9406564584124654e-324},
        {"0e-999", 0.0},
        {"-0.000e-400", -0.0},
        {"12abc", std::nullopt},
    };
    for (const auto& [name, path] : kPaths) {
        for (const Case& c : cases) {
            EXPECT_EQ(path.first(c.text), c.value) << name << " " << c.text;
        }
        const auto nan = path.first("nan");
        ASSERT_TRUE(nan) << name;
        EXPECT_TRUE(std::isnan(*nan)) << name;
    }
}

TEST(DoubleTextTest, WritesTheShortestTextThatReadsBack) {
    using N = DoubleText::Notation;
    struct Case {
        double value;
        N notation;
        const char* text;
    };
    const Case cases[] = {
        {785000000.0, N::Fixed, "785000000"},
        {785000000.123456, N::Fixed, "785000000.123456"},
        {0.1, N::Fixed, "0.1"},
        {-2.5, N::Fixed, "-2.5"},
        {1e19, N::Fixed, "10000000000000000000"},
        {0.0, N::Fixed, "0"},
        {1.5e-7, N::Scientific, "1.5e-07"},
        {1e300, N::Scientific, "1e+300"},
        {30.7, N::General, "30.7"},
        {1e300, N::General, "1e+300"},
        {std::numeric_limits<double>::infinity(), N::General, "inf"},
        {-std::numeric_limits<double>::infinity(), N::Fixed, "-inf"},
        {std::nan(""), N::Scientific, "nan"},
    };
    for (const auto& [name, path] : kPaths) {
        for (const Case& c : cases) {
            EXPECT_EQ(path.second(c.value, c.notation), c.text) << name << " " << c.text;
        }
    }
}

TEST(DoubleTextTest, RoundTripsEveryKindOfTimestamp) {
    const double values[] = {785000000.123456,       817000000.0000001, 1.0 / 3.0,         5e-324,
                             1.7976931348623157e308, -0.0001,           123456789.98765432};
    for (const auto& [name, path] : kPaths) {
        for (double value : values) {
            for (auto notation : {DoubleText::Notation::Fixed, DoubleText::Notation::Scientific,
                                  DoubleText::Notation::General}) {
                const std::string text = path.second(value, notation);
                EXPECT_EQ(path.first(text), value) << name << " " << text;
            }
        }
    }
}

} // namespace
} // namespace quorvane
