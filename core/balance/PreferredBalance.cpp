#include "balance/PreferredBalance.h"

#include <algorithm>

namespace quorvane {

namespace {

constexpr std::string_view kPreferredCurrency = "USD";

} // namespace

std::optional<std::size_t> preferredBalanceIndex(const BalanceResponse& response) {
    const std::vector<BalanceInfo>& infos = response.balanceInfos;
    if (infos.empty()) {
        return std::nullopt;
    }
    const auto usd = std::find_if(infos.begin(), infos.end(), [](const BalanceInfo& info) {
        return info.currency == kPreferredCurrency;
    });
    return usd != infos.end() ? static_cast<std::size_t>(usd - infos.begin()) : 0;
}

std::optional<BalanceInfo> preferredBalance(const BalanceResponse& response) {
    const std::optional<std::size_t> index = preferredBalanceIndex(response);
    if (!index) {
        return std::nullopt;
    }
    return response.balanceInfos[*index];
}

Decimal lowBalanceThreshold(std::string_view currency) {
    return Decimal::fromInteger(currency == kPreferredCurrency ? 1 : 10);
}

bool isHealthyBalance(const Decimal& balance, std::string_view currency) {
    return lowBalanceThreshold(currency) < balance;
}

} // namespace quorvane
