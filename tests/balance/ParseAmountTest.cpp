#include "balance/ParseAmount.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

TEST(ParseAmountTest, ReadsTheExactDecimalTheTextStartsWithOrZero) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"110.00", "110"},
        {"0.1", "0.1"},
        {"-12.50", "-12.5"},
        {"0.0037", "0.0037"},
        {"12345678901234567890.123456789", "12345678901234567890.123456789"},
        {"", "0"},
        {"abc", "0"},
        {"-", "0"},
        {".", "0"},
        {"1,5", "1"},
        {"1,234.5", "1"},
        {"  7", "7"},
        {"12 USD", "12"},
        {"1e3", "1000"},
        {"$5", "0"},
        {"1e999", "0"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(parseAmount(text).toString(), expected) << "\"" << text << "\"";
    }
    EXPECT_EQ(parseAmount("110.00"), Decimal::fromInteger(110));
    EXPECT_EQ(parseAmount("0.1") + parseAmount("0.2"), parseAmount("0.3"));
}

} // namespace
} // namespace quorvane
