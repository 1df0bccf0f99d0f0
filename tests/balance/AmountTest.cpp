#include "balance/MoneyFormat.h"
#include "balance/PreferredBalance.h"
#include "icu/IcuFormatter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

TEST(PreferredBalanceTest, TakesTheFirstExactUsdEntryElseTheFirstEntry) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{}, "none"},
        {{"CNY"}, "0"},
        {{"CNY", "USD", "USD"}, "1"},
        {{"CNY", "usd", "USD"}, "2"},
        {{"EUR", "usd", " USD", "USD "}, "0"},
    };
    for (const auto& [currencies, expected] : cases) {
        // Each total is the entry's position, so the chosen one is identifiable.
        BalanceResponse response{true, {}};
        for (const std::string& currency : currencies) {
            response.balanceInfos.push_back(
                {currency, std::to_string(response.balanceInfos.size()), "0", "0"});
        }
        const std::optional<BalanceInfo> chosen = preferredBalance(response);
        EXPECT_EQ(chosen ? chosen->totalBalance : "none", expected) << ::testing::PrintToString(currencies);
    }
}

TEST(MoneyFormatTest, FollowsTheLocaleWithAtMostFourFractionDigitsOrFallsBackToCodeAndPlainText) {
    const std::vector<std::tuple<std::string, const char*, std::string, std::string>> cases = {
        {"en_US", "12", "USD", "$12.00"},
        {"en_US", "0.12345", "USD", "$0.1234"},
        {"en_US", "0.12355", "USD", "$0.1236"},
        {"en_US", "-2.5", "USD", "-$2.50"},
        {"de_DE", "1234567.5", "EUR", "1.234.567,50\xC2\xA0\xE2\x82\xAC"},
        // A code the formatter cannot use.
        {"en_US", "-0.0037", "US", "US -0.0037"},
        {"en_US", "1234567.891", "", " 1234567.891"},
    };
    for (const auto& [locale, value, currency, expected] : cases) {
        EXPECT_EQ(formatMoney(IcuFormatter(locale), Decimal::parse(value).value(), currency), expected)
            << locale << " " << value;
    }
}

} // namespace
} // namespace quorvane
