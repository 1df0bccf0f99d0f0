// One balance sample of the history: when, in which currency, how much.
#pragma once

#include "values/Decimal.h"
#include "values/Timestamp.h"

#include <string>

namespace quorvane {

struct BalancePoint {
    Timestamp timestamp;
    std::string currency;
    Decimal balance;

    friend bool operator==(const BalancePoint&, const BalancePoint&) = default;
};

} // namespace quorvane
