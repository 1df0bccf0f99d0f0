// The money text of the menu, the dashboard card and the summary.
#pragma once

#include "platform/Formatter.h"
#include "values/Decimal.h"

#include <string>

namespace quorvane {

// The user's locale's currency style with at most four fraction digits, so a
// spend of 0.0037 keeps its four places while whole amounts show the
// currency's standard two. When the locale's formatter yields nothing, the
// code, a blank and the plain decimal text ("XYZ 12.5").
std::string formatMoney(const Formatter& formatter, const Decimal& amount, const std::string& currency);

} // namespace quorvane
