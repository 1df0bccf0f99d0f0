#include "balance/PreferredBalance.h"

#include <algorithm>

namespace quorvane {

namespace {

constexpr std::string_view kPreferredCurrency = "USD";

} // namespace

std::optional<BalanceInfo> preferredBalance(const BalanceResponse& response) {
    const std::vector<BalanceInfo>& infos = response.balanceInfos;
    if (infos.empty()) {
        return std::nullopt;
    }
    const auto usd = std::find_if(infos.begin(), infos.end(), [](const BalanceInfo& info) {
        return info.currency == kPreferredCurrency;
    });
    return usd != infos.end() ? *usd : infos.front();
}

Decimal lowBalanceThreshold(std::string_view currency) {
    return Decimal::fromInteger(currency == kPreferredCurrency ? 1 : 10);
}

bool isHealthyBalance(const Decimal& balance, std::string_view currency) {
    return lowBalanceThreshold(currency) < balance;
}

} // namespace quorvane
