// Balance endpoint bodies for tests, written the way the provider sends them.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace quorvane {

// {"is_available":true,"balance_infos":[{"currency":"USD","total_balance":"12.50",...}]}
inline std::string balanceBody(const std::vector<std::pair<std::string, std::string>>& totals,
                               bool isAvailable = true) {
    std::string body =
        std::string("{\"is_available\":") + (isAvailable ? "true" : "false") + ",\"balance_infos\":[";
    for (std::size_t i = 0; i < totals.size(); ++i) {
        const auto& [currency, total] = totals[i];
        if (i > 0) {
            body += ',';
        }
        body += std::string("{\"currency\":\"") + currency + "\",\"total_balance\":\"" + total +
                "\",\"granted_balance\":\"0.00\",\"topped_up_balance\":\"" + total + "\"}";
    }
    return body + "]}";
}

} // namespace quorvane
