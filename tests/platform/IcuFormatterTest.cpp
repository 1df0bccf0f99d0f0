#include "icu/IcuFormatter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <optional>
#include <string>
#include <utility>

namespace quorvane {
namespace {

Decimal decimalOf(const char* text) {
    return Decimal::parseExact(text).value();
}

// 2026-03-01T22:59:59Z, the last second of 1 March in Berlin (UTC+1).
constexpr double kLastBerlinSecond = 1772405999.0;
// 2026-12-31T12:00:00Z, a day whose US week already belongs to 2027.
constexpr double kLastDayOf2026 = 1798718400.0;

struct CurrencyCase {
    const char* locale;
    const char* amount;
    const char* code;
    int maxDigits;
    const char* expected;
};

TEST(IcuFormatterTest, CurrencyUsesLocaleSymbolAndCurrencyDigits) {
    const CurrencyCase cases[] = {
        {"en_US", "12", "USD", 4, "$12.00"},
        {"en_US", "0.12345", "USD", 4, "$0.1234"},
        {"en_US", "1234567.5", "USD", 4, "$1,234,567.50"},
        {"en_US", "-12.5", "USD", 4, "-$12.50"},
        {"en_US", "12345678901234567890123456789012345678", "USD", 4,
         "$12,345,678,901,234,567,890,123,456,789,012,345,678.00"},
        {"de_DE", "12", "USD", 4, "12,00\u00A0$"},
        {"fr_FR", "1234.5", "EUR", 4, "1\u202F234,50\u00A0\u20AC"},
        {"en_US", "10", "CNY", 4, "CN\u00A510.00"},
        {"en_US", "12.5", "JPY", 4, "\u00A512.5"},
        {"en_US", "12", "BHD", 4, "BHD\u00A012.000"},
        {"en_US", "12", "BHD", 2, "BHD\u00A012.00"},
        {"en_US", "12.345", "USD", 2, "$12.34"},
        {"en_US", "12.355", "USD", 2, "$12.36"},
        {"en_US", "12", "ZZZ", 4, "ZZZ\u00A012.00"},
        {"en_US", "12", "usd", 4, "$12.00"},
    };
    for (const CurrencyCase& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + c.amount + " " + c.code);
        EXPECT_EQ(IcuFormatter(c.locale).currency(decimalOf(c.amount), c.code, c.maxDigits), c.expected);
    }
}

TEST(IcuFormatterTest, CurrencyGivesNothingForUnusableCodeOrDigits) {
    const std::pair<const char*, int> cases[] = {
        {"", 4}, {"US", 4}, {"USDX", 4}, {"123", 4}, {"U$D", 4}, {"\xE2\x82\xAC", 4}, {"USD", -1},
    };
    const IcuFormatter formatter("en_US");
    for (const auto& [code, maxDigits] : cases) {
        SCOPED_TRACE(std::string("code \"") + code + "\" max " + std::to_string(maxDigits));
        EXPECT_EQ(formatter.currency(decimalOf("12"), code, maxDigits), std::nullopt);
    }
}

struct DecimalCase {
    const char* locale;
    const char* amount;
    int maxDigits;
    std::optional<std::string> expected;
};

TEST(IcuFormatterTest, DecimalGroupsAndRoundsHalfEvenWithoutTrailingZeros) {
    const DecimalCase cases[] = {
        {"en_US", "2.50", 4, "2.5"},
        {"en_US", "-0.5", 4, "-0.5"},
        {"en_US", "1234.56789", 4, "1,234.5679"},
        {"de_DE", "1234.56789", 4, "1.234,5679"},
        {"fr_FR", "1234.5", 4, "1\u202F234,5"},
        {"en_US", "0.00005", 4, "0"},
        {"en_US", "0.00015", 4, "0.0002"},
        {"en_US", "1234.5", 0, "1,234"},
        {"en_US", "12345678901234567890123456789012345678", 4,
         "12,345,678,901,234,567,890,123,456,789,012,345,678"},
        {"en_US", "1", -1, std::nullopt},
    };
    for (const DecimalCase& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + c.amount + " max " + std::to_string(c.maxDigits));
        EXPECT_EQ(IcuFormatter(c.locale).decimal(decimalOf(c.amount), c.maxDigits), c.expected);
    }
}

struct DayKeyCase {
    const char* locale;
    double unixSeconds;
    const char* zone;
    const char* expected;
};

TEST(IcuFormatterTest, DayKeyIsTheGregorianCalendarDateInTheZone) {
    const DayKeyCase cases[] = {
        {"en_US", kLastBerlinSecond, "Europe/Berlin", "2026-03-01"},
        {"en_US", kLastBerlinSecond + 1, "Europe/Berlin", "2026-03-02"},
        {"en_US", kLastBerlinSecond + 1, "UTC", "2026-03-01"},
        // 07:59:59Z is 23:59:59 in Los Angeles (UTC-8).
        {"en_US", 1772438399.0, "America/Los_Angeles", "2026-03-01"},
        {"en_US", 1772438400.0, "America/Los_Angeles", "2026-03-02"},
        // Unknown and empty zone ids fall back to GMT.
        {"en_US", kLastBerlinSecond + 1, "Mars/Olympus", "2026-03-01"},
        {"en_US", kLastBerlinSecond + 1, "", "2026-03-01"},
        {"en_US", kLastDayOf2026, "UTC", "2026-12-31"},
        // Thai's own calendar would give the Buddhist year 2569.
        {"th_TH", kLastBerlinSecond + 1, "Europe/Berlin", "2026-03-02"},
        {"ar_EG", kLastBerlinSecond + 1, "Europe/Berlin",
         "\u0662\u0660\u0662\u0666-\u0660\u0663-\u0660\u0662"},
    };
    for (const DayKeyCase& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + std::to_string(c.unixSeconds) + " " + c.zone);
        EXPECT_EQ(IcuFormatter(c.locale).dayKey(Timestamp::fromUnixSeconds(c.unixSeconds), c.zone),
                  c.expected);
    }
}

struct DateTimeCase {
    const char* locale;
    DateStyle date;
    TimeStyle time;
    const char* zone;
    const char* expected;
};

TEST(IcuFormatterTest, DateTimeUsesLocaleStylesInTheZone) {
    const DateTimeCase cases[] = {
        {"en_US", DateStyle::Short, TimeStyle::Medium, "UTC", "3/1/26, 10:59:59\u202FPM"},
        {"en_US", DateStyle::Short, TimeStyle::Medium, "Europe/Berlin", "3/1/26, 11:59:59\u202FPM"},
        {"de_DE", DateStyle::Short, TimeStyle::Medium, "Europe/Berlin", "01.03.26, 23:59:59"},
        {"en_US", DateStyle::Medium, TimeStyle::Short, "UTC", "Mar 1, 2026, 10:59\u202FPM"},
        {"en_US", DateStyle::None, TimeStyle::Short, "UTC", "10:59\u202FPM"},
        {"en_US", DateStyle::Short, TimeStyle::None, "Europe/Berlin", "3/1/26"},
        {"en_US", DateStyle::None, TimeStyle::None, "UTC", ""},
    };
    for (const DateTimeCase& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + c.zone + " " + c.expected);
        EXPECT_EQ(IcuFormatter(c.locale).dateTime(Timestamp::fromUnixSeconds(kLastBerlinSecond), c.date,
                                                  c.time, c.zone),
                  c.expected);
    }
}

struct RelativeCase {
    const char* locale;
    double secondsFromNow;
    const char* expected;
};

TEST(IcuFormatterTest, RelativeTimeTakesLargestReachedUnitTruncated) {
    const RelativeCase cases[] = {
        {"en_US", 0.0, "0 sec. ago"},
        {"en_US", 0.5, "in 0 sec."},
        {"en_US", -59.75, "59 sec. ago"},
        {"en_US", -60.0, "1 min. ago"},
        {"en_US", -3599.0, "59 min. ago"},
        {"en_US", -3600.0, "1 hr. ago"},
        {"en_US", -86399.0, "23 hr. ago"},
        {"en_US", -86400.0, "1 day ago"},
        {"en_US", -604799.0, "6 days ago"},
        {"en_US", -604800.0, "1 wk. ago"},
        {"en_US", -2629799.0, "4 wk. ago"},
        {"en_US", -2629800.0, "1 mo. ago"},
        {"en_US", -31557599.0, "11 mo. ago"},
        {"en_US", -31557600.0, "1 yr. ago"},
        {"en_US", -31557600.0 * 1e9, "1,000,000,000 yr. ago"},
        {"en_US", 120.0, "in 2 min."},
        {"de_DE", -120.0, "vor 2 Min."},
        {"fr_FR", -120.0, "il y a 2\u00A0min"},
    };
    const Timestamp now = Timestamp::fromUnixSeconds(kLastBerlinSecond);
    for (const RelativeCase& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + std::to_string(c.secondsFromNow));
        EXPECT_EQ(IcuFormatter(c.locale).relativeTime(now.plusSeconds(c.secondsFromNow), now), c.expected);
    }
}

TEST(IcuFormatterTest, NonFiniteTimesGiveEmptyTexts) {
    const IcuFormatter formatter("en_US");
    const Timestamp now = Timestamp::fromUnixSeconds(kLastBerlinSecond);
    for (const double bad :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        SCOPED_TRACE(bad);
        const Timestamp time{bad};
        EXPECT_EQ(formatter.dayKey(time, "UTC"), "");
        EXPECT_EQ(formatter.dateTime(time, DateStyle::Short, TimeStyle::Medium, "UTC"), "");
        EXPECT_EQ(formatter.relativeTime(time, now), "");
        EXPECT_EQ(formatter.relativeTime(now, time), "");
    }
    // Finite but far beyond any calendar: ICU clamps it to its last representable day.
    EXPECT_EQ(formatter.dayKey(Timestamp{1e300}, "UTC"), "5828963-12-20");
}

struct EnvironmentCase {
    const char* lcAll;
    const char* lcMessages;
    const char* lang;
    const char* expected;
    const char* money;
};

// The text as a regular expression that matches only itself.
std::string quoted(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (std::string_view("\\^$.|?*+()[]{}").find(c) != std::string_view::npos) {
            out += '\\';
        }
        out += c;
    }
    return out;
}

void setOrUnset(const char* name, const char* value) {
    if (value == nullptr) {
        unsetenv(name);
    } else {
        setenv(name, value, 1);
    }
}

// ICU reads the environment once per process, so each case runs in a fresh one.
TEST(IcuFormatterTest, DefaultLocaleFollowsEnvironmentPrecedence) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const EnvironmentCase cases[] = {
        {nullptr, nullptr, "de_DE.UTF-8", "de_DE", "26,43\u00A0$"},
        {"fr_FR.UTF-8", nullptr, "de_DE.UTF-8", "fr_FR", "26,43\u00A0$US"},
        {nullptr, "fr_FR.UTF-8", "de_DE.UTF-8", "fr_FR", "26,43\u00A0$US"},
        // No locale chosen: money reads as in en_US, not en_US_POSIX's "$ 26.43".
        {"C", nullptr, "de_DE.UTF-8", "en_US", "$26.43"},
        {"C.UTF-8", nullptr, nullptr, "en_US", "$26.43"},
        {nullptr, nullptr, "POSIX", "en_US", "$26.43"},
        {nullptr, nullptr, nullptr, "en_US", "$26.43"},
        // An empty LC_ALL still wins and names the root locale.
        {"", nullptr, "de_DE.UTF-8", "", "US$\u00A026.43"},
    };
    for (const EnvironmentCase& c : cases) {
        SCOPED_TRACE(c.expected);
        EXPECT_EXIT(
            {
                setOrUnset("LC_ALL", c.lcAll);
                setOrUnset("LC_MESSAGES", c.lcMessages);
                setOrUnset("LANG", c.lang);
                const IcuFormatter formatter(IcuFormatter::defaultLocaleId());
                std::cerr << '[' << formatter.localeId() << "] "
                          << formatter.currency(decimalOf("26.43"), "USD", 2).value_or("?");
                std::exit(0);
            },
            ::testing::ExitedWithCode(0), std::string("\\[") + c.expected + "\\] " + quoted(c.money));
    }
}

} // namespace
} // namespace quorvane
