#include "menu/BalanceSummary.h"

#include "balance/MoneyFormat.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

namespace quorvane {

std::string BalanceSummary::text(const std::optional<RefreshFacts>& facts,
                                 const std::optional<std::string>& lastError, const Formatter& formatter) {
    if (!facts) {
        if (lastError) {
            return "Quorvane error: " + *lastError;
        }
        return "Quorvane has no balance data yet.";
    }
    std::string summary = "Quorvane\nUpdated: ";
    summary += facts->updatedAt ? utcText(*facts->updatedAt) : std::string("never");
    for (const CurrencyFacts& currency : facts->currencies) {
        const std::string& code = currency.currency;
        summary += "\n" + code + " remaining: " + formatMoney(formatter, currency.remaining, code);
        summary += "\n" + code + " today spent: " + formatMoney(formatter, currency.spentToday, code);
        summary +=
            "\n" + code + " since baseline: " + formatMoney(formatter, currency.spentSinceBaseline, code);
    }
    return summary;
}

std::string BalanceSummary::utcText(Timestamp time) {
    using namespace std::chrono;
    // Whole seconds, rounded down, as the platform's description of a date shows them.
    const double unix = std::floor(time.unixSeconds());
    // Beyond what a calendar date can say; no refresh can produce it.
    if (!std::isfinite(unix) || std::fabs(unix) > 1e15) {
        return "0001-01-01 00:00:00 +0000";
    }
    const sys_seconds instant{seconds{static_cast<std::int64_t>(unix)}};
    const sys_days day = floor<days>(instant);
    const year_month_day date{day};
    const hh_mm_ss<seconds> clock{instant - day};
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02u %02lld:%02lld:%02lld +0000",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<long long>(clock.hours().count()),
                  static_cast<long long>(clock.minutes().count()),
                  static_cast<long long>(clock.seconds().count()));
    return buffer;
}

} // namespace quorvane
