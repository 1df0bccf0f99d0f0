#include "icu/IcuFormatter.h"

#include <unicode/datefmt.h>
#include <unicode/gregocal.h>
#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/reldatefmt.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/ucurr.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <utility>

namespace quorvane {

namespace {

struct RelativeUnit {
    double seconds;
    URelativeDateTimeUnit unit;
};

// Ascending; a difference is told in the largest unit it reaches. A month is
// a twelfth of a Julian year, so twelve months make exactly one year.
constexpr std::array<RelativeUnit, 7> kRelativeUnits{{
    {1.0, UDAT_REL_UNIT_SECOND},
    {60.0, UDAT_REL_UNIT_MINUTE},
    {3600.0, UDAT_REL_UNIT_HOUR},
    {86400.0, UDAT_REL_UNIT_DAY},
    {604800.0, UDAT_REL_UNIT_WEEK},
    {2629800.0, UDAT_REL_UNIT_MONTH},
    {31557600.0, UDAT_REL_UNIT_YEAR},
}};

constexpr double kMillisPerSecond = 1000.0;

bool isAsciiLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string toUtf8(const icu::UnicodeString& text) {
    std::string out;
    text.toUTF8String(out);
    return out;
}

// Money never goes through double: ICU reads the decimal's own digits.
std::optional<std::string> formatExact(const icu::number::LocalizedNumberFormatter& formatter,
                                       const Decimal& amount) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::number::FormattedNumber formatted = formatter.formatDecimal(amount.toString(), status);
    const icu::UnicodeString text = formatted.toString(status);
    if (U_FAILURE(status) || text.isEmpty()) {
        return std::nullopt;
    }
    return toUtf8(text);
}

std::unique_ptr<icu::TimeZone> zoneFor(const std::string& timeZoneId) {
    return std::unique_ptr<icu::TimeZone>(
        icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(timeZoneId)));
}

// ICU's calendars take millisecond times; NaN would reach its field arithmetic
// unchecked, while infinities are merely clamped, so both are refused here.
std::optional<UDate> icuDate(Timestamp time) {
    const double millis = time.unixSeconds() * kMillisPerSecond;
    if (!std::isfinite(millis)) {
        return std::nullopt;
    }
    return millis;
}

icu::DateFormat::EStyle icuStyle(DateStyle style) {
    switch (style) {
    case DateStyle::Short:
        return icu::DateFormat::kShort;
    case DateStyle::Medium:
        return icu::DateFormat::kMedium;
    case DateStyle::None:
        break;
    }
    return icu::DateFormat::kNone;
}

icu::DateFormat::EStyle icuStyle(TimeStyle style) {
    switch (style) {
    case TimeStyle::Short:
        return icu::DateFormat::kShort;
    case TimeStyle::Medium:
        return icu::DateFormat::kMedium;
    case TimeStyle::None:
        break;
    }
    return icu::DateFormat::kNone;
}

} // namespace

IcuFormatter::IcuFormatter(std::string localeId)
    : m_localeId(std::move(localeId)) {}

std::string IcuFormatter::defaultLocaleId() {
    const std::string id = icu::Locale::getDefault().getName();
    // "C", "C.UTF-8" and "POSIX" (the default of many machines and
    // containers) say that no locale was chosen. ICU calls that en_US_POSIX,
    // a locale for machines that writes "$ 26.43"; a person gets en_US.
    return id == "en_US_POSIX" ? std::string("en_US") : id;
}

std::optional<std::string> IcuFormatter::currency(const Decimal& amount, const std::string& code,
                                                  int maxFractionDigits) const {
    if (code.size() != 3 || !std::all_of(code.begin(), code.end(), isAsciiLetter)) {
        return std::nullopt;
    }
    const char16_t isoCode[] = {static_cast<char16_t>(code[0]), static_cast<char16_t>(code[1]),
                                static_cast<char16_t>(code[2]), u'\0'};
    UErrorCode status = U_ZERO_ERROR;
    const int standardDigits = ucurr_getDefaultFractionDigits(isoCode, &status);
    const icu::CurrencyUnit unit(isoCode, status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    const int minFractionDigits = std::min(standardDigits, maxFractionDigits);
    return formatExact(
        icu::number::NumberFormatter::withLocale(icu::Locale(m_localeId.c_str()))
            .unit(unit)
            .precision(icu::number::Precision::minMaxFraction(minFractionDigits, maxFractionDigits))
            .roundingMode(UNUM_ROUND_HALFEVEN),
        amount);
}

std::optional<std::string> IcuFormatter::decimal(const Decimal& amount, int maxFractionDigits) const {
    return formatExact(icu::number::NumberFormatter::withLocale(icu::Locale(m_localeId.c_str()))
                           .precision(icu::number::Precision::maxFraction(maxFractionDigits))
                           .roundingMode(UNUM_ROUND_HALFEVEN),
                       amount);
}

std::string IcuFormatter::dayKey(Timestamp time, const std::string& timeZoneId) const {
    const std::optional<UDate> date = icuDate(time);
    std::unique_ptr<icu::TimeZone> zone = zoneFor(timeZoneId);
    if (!date || !zone) {
        return {};
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale locale(m_localeId.c_str());
    icu::SimpleDateFormat format(icu::UnicodeString(u"yyyy-MM-dd"), locale, status);
    // The locale's own calendar may be another (Buddhist years in th_TH), and
    // the key must name the same day on every machine.
    auto calendar = std::make_unique<icu::GregorianCalendar>(zone.release(), locale, status);
    if (U_FAILURE(status)) {
        return {};
    }
    format.adoptCalendar(calendar.release());
    icu::UnicodeString text;
    format.format(*date, text);
    return toUtf8(text);
}

std::string IcuFormatter::dateTime(Timestamp time, DateStyle date, TimeStyle timeStyle,
                                   const std::string& timeZoneId) const {
    // ICU answers "no date, no time" with a numeric fallback pattern, not with nothing.
    if (date == DateStyle::None && timeStyle == TimeStyle::None) {
        return {};
    }
    const std::optional<UDate> when = icuDate(time);
    std::unique_ptr<icu::TimeZone> zone = zoneFor(timeZoneId);
    if (!when || !zone) {
        return {};
    }
    std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateTimeInstance(
        icuStyle(date), icuStyle(timeStyle), icu::Locale(m_localeId.c_str())));
    if (!format) {
        return {};
    }
    format->adoptTimeZone(zone.release());
    icu::UnicodeString text;
    format->format(*when, text);
    return toUtf8(text);
}

std::string IcuFormatter::relativeTime(Timestamp time, Timestamp now) const {
    const double difference = time.secondsSinceReferenceDate - now.secondsSinceReferenceDate;
    if (!std::isfinite(difference)) {
        return {};
    }
    const double magnitude = std::fabs(difference);
    RelativeUnit chosen = kRelativeUnits.front();
    for (const RelativeUnit& candidate : kRelativeUnits) {
        if (magnitude >= candidate.seconds) {
            chosen = candidate;
        }
    }
    double count = std::trunc(difference / chosen.seconds);
    // ICU reads the direction from the sign bit, so "now" must be -0.0 to say
    // "0 sec. ago" rather than "in 0 sec.".
    if (difference <= 0.0) {
        count = -std::fabs(count);
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::RelativeDateTimeFormatter formatter(icu::Locale(m_localeId.c_str()), nullptr, UDAT_STYLE_SHORT,
                                                   UDISPCTX_CAPITALIZATION_NONE, status);
    icu::UnicodeString text;
    formatter.formatNumeric(count, chosen.unit, text, status);
    if (U_FAILURE(status)) {
        return {};
    }
    return toUtf8(text);
}

} // namespace quorvane
