#include "tracking/RefreshFacts.h"

#include "balance/ParseAmount.h"
#include "balance/PreferredBalance.h"

namespace quorvane {

RefreshFacts RefreshFacts::of(const BalanceResponse& response, const SpendBaselines& baselines,
                              std::optional<Timestamp> updatedAt) {
    RefreshFacts facts;
    facts.isAvailable = response.isAvailable;
    facts.updatedAt = updatedAt;
    facts.currencies.reserve(response.balanceInfos.size());
    for (const BalanceInfo& info : response.balanceInfos) {
        CurrencyFacts currency;
        currency.currency = info.currency;
        const std::optional<Decimal> remaining = readAmount(info.totalBalance);
        currency.remaining = remaining.value_or(Decimal{});
        currency.remainingKnown = remaining.has_value();
        currency.granted = parseAmount(info.grantedBalance);
        currency.toppedUp = parseAmount(info.toppedUpBalance);
        currency.spentToday = baselines.spentToday(currency.remaining, info.currency);
        currency.spentSinceBaseline = baselines.spentSinceBaseline(currency.remaining, info.currency);
        currency.healthy = isHealthyBalance(currency.remaining, info.currency);
        facts.currencies.push_back(std::move(currency));
    }
    facts.preferredIndex = preferredBalanceIndex(response);
    return facts;
}

} // namespace quorvane
