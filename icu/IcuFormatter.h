// The formatting interface on ICU, for one locale: the Linux shell's and the tests' formatter.
#pragma once

#include "platform/Formatter.h"

#include <string>

namespace quorvane {

// Every call builds its ICU formatter from the locale id and the zone id it is
// given, so a change of the user's time zone shows at the next call. A locale
// id ICU has no data for borrows ICU's default locale's data, never an error.
class IcuFormatter : public Formatter {
public:
    // An ICU locale id such as "en_US", "de_DE" or "fr_FR".
    explicit IcuFormatter(std::string localeId);

    // ICU's default locale. ICU reads it from the environment once per process:
    // the first of LC_ALL, LC_MESSAGES and LANG that is set (even to an empty
    // text, which gives the root locale ""), without the encoding suffix
    // ("de_DE.UTF-8" gives "de_DE"); "C", "C.UTF-8" and "POSIX" give en_US,
    // not ICU's en_US_POSIX. Parsing keeps en_US_POSIX whatever this says.
    static std::string defaultLocaleId();

    const std::string& localeId() const { return m_localeId; }

    // Nothing unless `code` is exactly three ASCII letters: ICU itself would
    // format an empty code as the unknown currency "¤" and cut a longer one to
    // its first three letters.
    std::optional<std::string> currency(const Decimal& amount, const std::string& code,
                                        int maxFractionDigits) const override;
    std::optional<std::string> decimal(const Decimal& amount, int maxFractionDigits) const override;

    // A zone id ICU does not know gives "Etc/Unknown", which ICU treats as GMT.
    // A time that is not finite gives an empty text.
    std::string dayKey(Timestamp time, const std::string& timeZoneId) const override;
    // Uses the locale's own calendar. No date and no time, or a time that is
    // not finite, give an empty text.
    std::string dateTime(Timestamp time, DateStyle date, TimeStyle timeStyle,
                         const std::string& timeZoneId) const override;
    // The unit is the largest of seconds, minutes, hours, days, weeks, months
    // (30.4375 days) and years (365.25 days) that the difference reaches, and
    // the count is truncated toward zero; a time at or before `now` always
    // reads as past ("0 sec. ago"). A difference that is not finite gives an
    // empty text.
    std::string relativeTime(Timestamp time, Timestamp now) const override;

private:
    std::string m_localeId;
};

} // namespace quorvane
