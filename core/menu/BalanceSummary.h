// The plain-text report of the last refresh that "Copy Summary" puts on the clipboard.
#pragma once

#include "platform/Formatter.h"
#include "tracking/RefreshFacts.h"
#include "values/Timestamp.h"

#include <optional>
#include <string>

namespace quorvane {

class BalanceSummary {
public:
    // Every currency of the last response, or the last error, or a line
    // saying there is nothing yet; lines joined by "\n" with none at the end.
    static std::string text(const std::optional<RefreshFacts>& facts,
                            const std::optional<std::string>& lastError, const Formatter& formatter);

    // "yyyy-MM-dd HH:mm:ss +0000" in UTC whatever the user's locale and zone,
    // so a pasted summary reads the same everywhere.
    static std::string utcText(Timestamp time);
};

} // namespace quorvane
