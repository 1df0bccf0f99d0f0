// One currency's entry in the balance endpoint's answer, amounts still as the endpoint wrote them.
#pragma once

#include <string>

namespace quorvane {

// The amounts stay text until used: nothing checks that they are numbers or
// that the total is the sum of its parts. parseAmount turns them into numbers.
struct BalanceInfo {
    std::string currency;
    std::string totalBalance;
    std::string grantedBalance;
    std::string toppedUpBalance;

    friend bool operator==(const BalanceInfo&, const BalanceInfo&) = default;
};

} // namespace quorvane
