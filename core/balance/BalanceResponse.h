// The balance endpoint's answer: its availability flag and one entry per currency.
#pragma once

#include "balance/BalanceInfo.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

struct BalanceDecoding;

struct BalanceResponse {
    bool isAvailable = false;
    // In the endpoint's order; may be empty.
    std::vector<BalanceInfo> balanceInfos;

    // The body must be a JSON object with "is_available" (a boolean) and
    // "balance_infos" (an array of objects, each with the strings "currency",
    // "total_balance", "granted_balance" and "topped_up_balance"). Other
    // members are ignored. A missing member, a null or any other JSON type
    // fails the whole decode; there are no defaults and no partial results.
    static BalanceDecoding decode(std::string_view body);

    friend bool operator==(const BalanceResponse&, const BalanceResponse&) = default;
};

struct BalanceDecoding {
    std::optional<BalanceResponse> response;
    // One line when response is empty, naming the member and what was wrong.
    // It never quotes the body.
    std::string error;
};

} // namespace quorvane
