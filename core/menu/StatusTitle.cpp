#include "menu/StatusTitle.h"

#include "balance/ParseAmount.h"
#include "balance/PreferredBalance.h"

namespace quorvane {

namespace {

// The title stays short: whole cents at most, unlike the menu's four places.
constexpr int kTitleFractionDigits = 2;

} // namespace

std::string StatusTitle::withSuffix(std::string_view mark, std::string_view suffix) {
    std::string title(mark);
    title += suffix;
    return title;
}

std::string StatusTitle::forResponse(const BalanceResponse& response, std::string_view appMark,
                                     const Formatter& formatter) {
    const std::optional<BalanceInfo> preferred = preferredBalance(response);
    if (!preferred) {
        return withSuffix(appMark, kNoBalanceSuffix);
    }
    const Decimal balance = parseAmount(preferred->totalBalance);
    const std::string_view mark = isHealthyBalance(balance, preferred->currency) ? appMark : kLowMark;
    const std::string amount =
        formatter.currency(balance, preferred->currency, kTitleFractionDigits).value_or(balance.toString());
    return std::string(mark) + " " + amount;
}

} // namespace quorvane
