#include "balance/MoneyFormat.h"

#include "fakes/StubFormatter.h"
#include "icu/IcuFormatter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

Decimal amount(const char* text) {
    return Decimal::parse(text).value();
}

TEST(MoneyFormatTest, AsksForFourFractionDigitsAndFallsBackToCodeAndPlainText) {
    const StubFormatter answering;
    EXPECT_EQ(formatMoney(answering, amount("0.0037"), "USD"), "USD:0.0037/4");

    const StubFormatter silent(false);
    EXPECT_EQ(formatMoney(silent, amount("12.50"), "USD"), "USD 12.5");
    EXPECT_EQ(formatMoney(silent, amount("-0.0037"), "XYZ"), "XYZ -0.0037");
    EXPECT_EQ(formatMoney(silent, amount("1234567.891"), "CNY"), "CNY 1234567.891");
    EXPECT_EQ(formatMoney(silent, amount("0"), ""), " 0");
}

TEST(MoneyFormatTest, FollowsTheLocaleWithAtMostFourFractionDigits) {
    const std::string nbsp = "\xC2\xA0";
    const std::vector<std::tuple<std::string, const char*, std::string, std::string>> cases = {
        {"en_US", "12", "USD", "$12.00"},
        {"en_US", "0.12345", "USD", "$0.1234"},
        {"en_US", "0.12355", "USD", "$0.1236"},
        {"en_US", "0.0037", "USD", "$0.0037"},
        {"en_US", "1234567.5", "USD", "$1,234,567.50"},
        {"en_US", "-2.5", "USD", "-$2.50"},
        {"en_US", "12", "US", "US 12"},
        {"de_DE", "12", "USD", "12,00" + nbsp + "$"},
        {"de_DE", "0.12345", "USD", "0,1234" + nbsp + "$"},
        {"de_DE", "0.0037", "USD", "0,0037" + nbsp + "$"},
        {"de_DE", "1234567.5", "EUR", "1.234.567,50" + nbsp + "\xE2\x82\xAC"},
    };
    for (const auto& [locale, value, currency, expected] : cases) {
        const IcuFormatter formatter(locale);
        EXPECT_EQ(formatMoney(formatter, amount(value), currency), expected) << locale << " " << value;
    }
}

} // namespace
} // namespace quorvane
