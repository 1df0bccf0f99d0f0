// Locale-aware texts on Foundation's number, date and relative-date formatters.
#pragma once

#include "platform/Formatter.h"

#include <optional>
#include <string>

namespace quorvane {

// Every call makes a new formatter in the user's current locale ([NSLocale
// currentLocale], which Foundation keeps until the user changes the region
// settings). Amounts reach the number formatters as NSDecimalNumber read from
// the decimal's exact text, never through a double. Times that are not finite
// give the empty text, and a time zone identifier Foundation does not know
// counts as GMT, as on the other platforms.
class MacFormatter : public Formatter {
public:
    std::optional<std::string> currency(const Decimal& amount, const std::string& code,
                                        int maxFractionDigits) const override;
    std::optional<std::string> decimal(const Decimal& amount, int maxFractionDigits) const override;
    std::string dayKey(Timestamp time, const std::string& timeZoneId) const override;
    std::string dateTime(Timestamp time, DateStyle date, TimeStyle timeStyle,
                         const std::string& timeZoneId) const override;
    std::string relativeTime(Timestamp time, Timestamp now) const override;
};

} // namespace quorvane
