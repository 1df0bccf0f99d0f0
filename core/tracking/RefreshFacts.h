// What one balance answer means, worked out once: the amounts, the spend and the entry that stands for the
// account.
#pragma once

#include "balance/BalanceResponse.h"
#include "tracking/SpendBaselines.h"
#include "values/Decimal.h"
#include "values/Timestamp.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// One currency of the answer with its texts read as amounts.
struct CurrencyFacts {
    std::string currency;
    Decimal remaining;
    Decimal granted;
    Decimal toppedUp;
    Decimal spentToday;
    Decimal spentSinceBaseline;
    bool healthy = true;
    // False when the remaining balance's text held no amount, so `remaining`
    // is the 0 it stands in for.
    bool remainingKnown = true;
};

// The title, the menu, its card and the copied summary all read a refresh
// through this, so an amount is parsed and a spend derived once per answer,
// not once per place that shows it. Made after the answer has moved the
// baselines, and again when the user resets them.
struct RefreshFacts {
    // In the answer's order; may be empty.
    std::vector<CurrencyFacts> currencies;
    // The entry that stands for the account where only one is shown.
    std::optional<std::size_t> preferredIndex;
    bool isAvailable = false;
    std::optional<Timestamp> updatedAt;

    static RefreshFacts of(const BalanceResponse& response, const SpendBaselines& baselines,
                           std::optional<Timestamp> updatedAt);

    const CurrencyFacts* preferred() const { return preferredIndex ? &currencies[*preferredIndex] : nullptr; }
};

} // namespace quorvane
