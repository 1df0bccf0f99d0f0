// Which balance stands for the account where only one is shown, and when it counts as low.
#pragma once

#include "balance/BalanceInfo.h"
#include "balance/BalanceResponse.h"
#include "values/Decimal.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace quorvane {

// The first entry in exactly "USD" (case matters), else the first entry;
// nothing for an empty list.
std::optional<BalanceInfo> preferredBalance(const BalanceResponse& response);
// Where that entry is in the list.
std::optional<std::size_t> preferredBalanceIndex(const BalanceResponse& response);

// 1 for exactly "USD", 10 for every other code.
Decimal lowBalanceThreshold(std::string_view currency);

// Healthy only above the threshold: a balance equal to it is already low.
bool isHealthyBalance(const Decimal& balance, std::string_view currency);

} // namespace quorvane
