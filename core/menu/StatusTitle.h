// The texts of the menu-bar title: a one-character mark, a blank, then a state or the balance.
#pragma once

#include "balance/BalanceResponse.h"
#include "platform/Formatter.h"

#include <string>
#include <string_view>

namespace quorvane {

class StatusTitle {
public:
    static constexpr std::string_view kAppMark = "\xF0\x9F\x90\x8B";         // 🐋 U+1F40B
    static constexpr std::string_view kLowMark = "\xE2\x9A\xA0\xEF\xB8\x8F"; // ⚠️ U+26A0 U+FE0F
    static constexpr std::string_view kToolTip = "Quorvane";

    static constexpr std::string_view kLaunchedSuffix = " DS";
    static constexpr std::string_view kRefreshingSuffix = " ...";
    static constexpr std::string_view kNoKeySuffix = " Key?";
    static constexpr std::string_view kFailedSuffix = " !";
    static constexpr std::string_view kNoBalanceSuffix = " 0";

    static std::string withSuffix(std::string_view mark, std::string_view suffix);

    // The title after a successful refresh: the preferred balance with at most
    // two fraction digits, marked low at or below its currency's threshold.
    static std::string forResponse(const BalanceResponse& response, std::string_view appMark,
                                   const Formatter& formatter);
};

} // namespace quorvane
