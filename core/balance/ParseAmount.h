// The one rule that turns an amount text from the endpoint or the store into a number.
#pragma once

#include "values/Decimal.h"

#include <optional>
#include <string_view>

namespace quorvane {

// The exact decimal the text starts with, read with a period as separator
// whatever the user's locale; 0 when it starts with no number. The endpoint's
// plain decimals ("-12.50") read exactly. Partly numeric texts read as far as
// they are a number: leading blanks are skipped ("  7" is 7), trailing text is
// ignored ("12 USD" is 12), a comma ends the number ("1,234.5" is 1, "1,5" is
// 1), an exponent is read ("1e3" is 1000). A value beyond the decimal's range
// reads as 0.
Decimal parseAmount(std::string_view text);

// The same reading, but nothing where parseAmount falls back to 0: the text
// starts with no number, or its value is beyond the decimal's range. For a
// rule that must not act on an amount the endpoint did not give.
std::optional<Decimal> readAmount(std::string_view text);

} // namespace quorvane
