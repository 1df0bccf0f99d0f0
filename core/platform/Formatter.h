// Locale-aware texts of numbers, money, dates and relative times.
#pragma once

#include "values/Decimal.h"
#include "values/Timestamp.h"

#include <optional>
#include <string>

namespace quorvane {

enum class DateStyle { None, Short, Medium };
enum class TimeStyle { None, Short, Medium };

// Implementations format in the user's locale (fixed at construction) and in
// the time zone they are given, so callers pass the clock's current zone.
// A fresh formatter is made for every call; nothing is cached between calls.
class Formatter {
public:
    virtual ~Formatter() = default;

    // Currency style for the ISO code, unchanged: the locale's symbol and its
    // place, grouping and decimal separator; at least the currency's standard
    // fraction digits (never more than maxFractionDigits), at most
    // maxFractionDigits, rounding half-even. Nothing when the locale's
    // formatter yields no text (an unusable code, for one).
    virtual std::optional<std::string> currency(const Decimal& amount, const std::string& code,
                                                int maxFractionDigits) const = 0;

    // Decimal style: grouping, the locale's separator, no minimum fraction
    // digits, at most maxFractionDigits, rounding half-even.
    virtual std::optional<std::string> decimal(const Decimal& amount, int maxFractionDigits) const = 0;

    // The "yyyy-MM-dd" pattern in the Gregorian calendar (calendar year, not
    // week year) in the given zone, with the locale's digits.
    virtual std::string dayKey(Timestamp time, const std::string& timeZoneId) const = 0;

    // The locale's date and time styles; DateStyle::None with a time style gives the time alone.
    virtual std::string dateTime(Timestamp time, DateStyle date, TimeStyle timeStyle,
                                 const std::string& timeZoneId) const = 0;

    // How long ago (or ahead) `time` is from `now`, in short units and numeric
    // style: "2 min. ago" in en_US, "vor 2 Min." in de_DE.
    virtual std::string relativeTime(Timestamp time, Timestamp now) const = 0;
};

} // namespace quorvane
