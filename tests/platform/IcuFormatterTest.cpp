#include "icu/IcuFormatter.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <optional>
#include <string>

namespace quorvane {
namespace {

Decimal decimalOf(const char* text) {
    return Decimal::parseExact(text).value();
}

// 2026-03-01T22:59:59Z, the last second of 1 March in Berlin (UTC+1).
constexpr double kLastBerlinSecond = 1772405999.0;
// 2026-12-31T12:00:00Z, a day whose US week already belongs to 2027.
constexpr double kLastDayOf2026 = 1798718400.0;

TEST(IcuFormatterTest, CurrencyTakesThreeLettersAndTheCurrencysDigitsUpToTheMaximum) {
    const struct {
        const char* locale;
        const char* amount;
        const char* code;
        int maxDigits;
        std::optional<std::string> expected;
    } cases[] = {
        {"en_US", "12", "USD", 4, "$12.00"},
        {"en_US", "12.345", "USD", 2, "$12.34"},
        {"en_US", "12.355", "USD", 2, "$12.36"},
        {"en_US", "-1234567.5", "USD", 4, "-$1,234,567.50"},
        // Exact beyond any double.
        {"en_US", "12345678901234567890123456789012345678", "USD", 4,
         "$12,345,678,901,234,567,890,123,456,789,012,345,678.00"},
        {"en_US", "12.5", "JPY", 4, "\u00A512.5"},
        {"en_US", "12", "BHD", 4, "BHD\u00A012.000"},
        {"en_US", "12", "BHD", 2, "BHD\u00A012.00"},
        {"en_US", "12", "AUD", 4, "A$12.00"},
        {"en_US", "12", "zar", 4, "ZAR\u00A012.00"},
        {"en_US", "12", "ZZZ", 4, "ZZZ\u00A012.00"},
        // Codes and digits it cannot use.
        {"en_US", "12", "US", 4, std::nullopt},
        {"en_US", "12", "U$D", 4, std::nullopt},
        {"en_US", "12", "\xE2\x82\xAC", 4, std::nullopt},
        {"en_US", "12", "USD", -1, std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + c.amount + " " + c.code + " " +
                     std::to_string(c.maxDigits));
        EXPECT_EQ(IcuFormatter(c.locale).currency(decimalOf(c.amount), c.code, c.maxDigits), c.expected);
    }
}

// Plain decimals round on a path of their own; only this table sees it round half up.
TEST(IcuFormatterTest, DecimalGroupsAndRoundsHalfEvenWithoutTrailingZeros) {
    const struct {
        const char* locale;
        const char* amount;
        int maxDigits;
        std::optional<std::string> expected;
    } cases[] = {
        {"en_US", "-1234.56789", 4, "-1,234.5679"},
        {"de_DE", "1234.5", 4, "1.234,5"},
        {"en_US", "0.00005", 4, "0"},
        {"en_US", "0.00015", 4, "0.0002"},
        {"en_US", "12345678901234567890123456789012345678", 4,
         "12,345,678,901,234,567,890,123,456,789,012,345,678"},
        {"en_US", "1", -1, std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + c.amount + " max " + std::to_string(c.maxDigits));
        EXPECT_EQ(IcuFormatter(c.locale).decimal(decimalOf(c.amount), c.maxDigits), c.expected);
    }
}

// The only test that would see the locale's own calendar (Buddhist years) in the key.
TEST(IcuFormatterTest, DayKeyIsTheGregorianCalendarDateInTheZone) {
    const struct {
        const char* locale;
        double unixSeconds;
        const char* zone;
        const char* expected;
    } cases[] = {
        {"en_US", kLastBerlinSecond, "Europe/Berlin", "2026-03-01"},
        {"en_US", kLastBerlinSecond + 1, "Europe/Berlin", "2026-03-02"},
        // An unknown zone id falls back to GMT.
        {"en_US", kLastBerlinSecond + 1, "Mars/Olympus", "2026-03-01"},
        {"en_US", kLastDayOf2026, "UTC", "2026-12-31"},
        // Thai's own calendar would give the Buddhist year 2569.
        {"th_TH", kLastBerlinSecond + 1, "Europe/Berlin", "2026-03-02"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + std::to_string(c.unixSeconds) + " " + c.zone);
        EXPECT_EQ(IcuFormatter(c.locale).dayKey(Timestamp::fromUnixSeconds(c.unixSeconds), c.zone),
                  c.expected);
    }
}

TEST(IcuFormatterTest, RelativeTimeTakesTheLargestUnitReachedTruncated) {
    const std::pair<double, const char*> cases[] = {
        {0.0, "0 sec. ago"},         {0.5, "in 0 sec."},         {-59.75, "59 sec. ago"},
        {-60.0, "1 min. ago"},       {-3599.0, "59 min. ago"},   {-3600.0, "1 hr. ago"},
        {-86399.0, "23 hr. ago"},    {-86400.0, "1 day ago"},    {-604799.0, "6 days ago"},
        {-604800.0, "1 wk. ago"},    {-2629799.0, "4 wk. ago"},  {-2629800.0, "1 mo. ago"},
        {-31557599.0, "11 mo. ago"}, {-31557600.0, "1 yr. ago"}, {120.0, "in 2 min."},
    };
    const Timestamp now = Timestamp::fromUnixSeconds(kLastBerlinSecond);
    for (const auto& [secondsFromNow, expected] : cases) {
        EXPECT_EQ(IcuFormatter("en_US").relativeTime(now.plusSeconds(secondsFromNow), now), expected);
    }
}

TEST(IcuFormatterTest, NonFiniteTimesGiveEmptyTexts) {
    const IcuFormatter formatter("en_US");
    const Timestamp now = Timestamp::fromUnixSeconds(kLastBerlinSecond);
    for (const double bad :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        const Timestamp time{bad};
        EXPECT_EQ(formatter.dayKey(time, "UTC"), "");
        EXPECT_EQ(formatter.dateTime(time, DateStyle::Short, TimeStyle::Medium, "UTC"), "");
        EXPECT_EQ(formatter.relativeTime(time, now), "");
        EXPECT_EQ(formatter.relativeTime(now, time), "");
    }
}

// ICU reads the environment once per process, so each case runs in a fresh one.
TEST(IcuFormatterTest, DefaultLocaleFollowsTheEnvironmentAndNoneChosenReadsAsEnUs) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const struct {
        const char* lcAll;
        const char* lang;
        std::string locale;
        std::string money;
    } cases[] = {
        {nullptr, "de_DE.UTF-8", "de_DE", "26,43\u00A0$"},
        // Not en_US_POSIX's "$ 26.43".
        {"C.UTF-8", "de_DE.UTF-8", "en_US", "$26.43"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.locale);
        EXPECT_EXIT(
            {
                unsetenv("LC_MESSAGES");
                c.lcAll != nullptr ? setenv("LC_ALL", c.lcAll, 1) : unsetenv("LC_ALL");
                c.lang != nullptr ? setenv("LANG", c.lang, 1) : unsetenv("LANG");
                const IcuFormatter formatter(IcuFormatter::defaultLocaleId());
                const bool right = formatter.localeId() == c.locale &&
                                   formatter.currency(decimalOf("26.43"), "USD", 2) == c.money;
                std::exit(right ? 0 : 1);
            },
            ::testing::ExitedWithCode(0), "");
    }
}

} // namespace
} // namespace quorvane
