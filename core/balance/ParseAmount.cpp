#include "balance/ParseAmount.h"

namespace quorvane {

Decimal parseAmount(std::string_view text) {
    return Decimal::parse(text).value_or(Decimal{});
}

} // namespace quorvane
