#include "balance/PreferredBalance.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

// Entries named by currency; each total is its position, so the chosen one is identifiable.
BalanceResponse responseOf(const std::vector<std::string>& currencies) {
    BalanceResponse response{true, {}};
    for (std::size_t i = 0; i < currencies.size(); ++i) {
        response.balanceInfos.push_back({currencies[i], std::to_string(i), "0", "0"});
    }
    return response;
}

TEST(PreferredBalanceTest, TakesTheFirstExactUsdEntryElseTheFirstEntry) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{}, "none"},
        {{"CNY"}, "0"},
        {{"CNY", "USD"}, "1"},
        {{"USD", "CNY"}, "0"},
        {{"CNY", "USD", "USD"}, "1"},
        {{"CNY", "usd", "USD"}, "2"},
        {{"EUR", "usd", " USD", "USD "}, "0"},
    };
    for (const auto& [currencies, expected] : cases) {
        const std::optional<BalanceInfo> chosen = preferredBalance(responseOf(currencies));
        EXPECT_EQ(chosen ? chosen->totalBalance : "none", expected) << ::testing::PrintToString(currencies);
    }
}

TEST(PreferredBalanceTest, HealthyOnlyAboveOneDollarOrTenOfAnyOtherCurrency) {
    EXPECT_EQ(lowBalanceThreshold("USD"), Decimal::fromInteger(1));
    EXPECT_EQ(lowBalanceThreshold("usd"), Decimal::fromInteger(10));
    EXPECT_EQ(lowBalanceThreshold("CNY"), Decimal::fromInteger(10));
    EXPECT_EQ(lowBalanceThreshold(""), Decimal::fromInteger(10));

    const std::vector<std::tuple<std::string, std::string, bool>> cases = {
        {"1", "USD", false},    {"1.00", "USD", false}, {"1.0001", "USD", true}, {"0.5", "USD", false},
        {"-3", "USD", false},   {"5", "USD", true},     {"5", "usd", false},     {"10", "CNY", false},
        {"10.01", "CNY", true}, {"9.99", "CNY", false}, {"0", "", false},        {"11", "", true},
    };
    for (const auto& [balance, currency, healthy] : cases) {
        EXPECT_EQ(isHealthyBalance(Decimal::parse(balance).value(), currency), healthy)
            << balance << " " << currency;
    }
}

} // namespace
} // namespace quorvane
