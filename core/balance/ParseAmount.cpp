#include "balance/ParseAmount.h"

namespace quorvane {

Decimal parseAmount(std::string_view text) {
    return readAmount(text).value_or(Decimal{});
}

std::optional<Decimal> readAmount(std::string_view text) {
    return Decimal::parse(text);
}

} // namespace quorvane
