#include "balance/MoneyFormat.h"

namespace quorvane {

namespace {

constexpr int kMaxFractionDigits = 4;

} // namespace

std::string formatMoney(const Formatter& formatter, const Decimal& amount, const std::string& currency) {
    if (std::optional<std::string> text = formatter.currency(amount, currency, kMaxFractionDigits)) {
        return *text;
    }
    return currency + " " + amount.toString();
}

} // namespace quorvane
