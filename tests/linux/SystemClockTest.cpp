#include "platform/SystemClock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <optional>
#include <string>

namespace quorvane {
namespace {

double unixSecondsNow() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

TEST(SystemClockTest, NowCountsFromTheReferenceDateWithSubSecondPrecision) {
    SystemClock clock;
    double before = unixSecondsNow();
    Timestamp now = clock.now();
    double after = unixSecondsNow();

    EXPECT_GE(now.secondsSinceReferenceDate, before - 978307200.0);
    EXPECT_LE(now.secondsSinceReferenceDate, after - 978307200.0);
    EXPECT_GE(now.unixSeconds(), before);
    EXPECT_LE(now.unixSeconds(), after);

    // Whole seconds would make many readings in a row equal.
    Timestamp first = clock.now();
    Timestamp later = first;
    for (int i = 0; i < 1000000 && later == first; ++i) {
        later = clock.now();
    }
    EXPECT_GT(later, first);
    EXPECT_LT(later.secondsSinceReferenceDate - first.secondsSinceReferenceDate, 0.5);
}

TEST(SystemClockTest, TheTimeZoneIsReadAnewOnEveryCall) {
    const char* saved = std::getenv("TZ");
    std::optional<std::string> previous = saved ? std::optional<std::string>(saved) : std::nullopt;
    SystemClock clock;

    const std::pair<const char*, std::string> zones[] = {
        {"Asia/Tokyo", "Asia/Tokyo"},
        {"Europe/Berlin", "Europe/Berlin"},
        {":America/New_York", "America/New_York"},
        {"Australia/Lord_Howe", "Australia/Lord_Howe"},
    };
    for (const auto& [tz, expected] : zones) {
        ::setenv("TZ", tz, 1);
        EXPECT_EQ(clock.timeZoneId(), expected) << tz;
    }

    if (previous) {
        ::setenv("TZ", previous->c_str(), 1);
    } else {
        ::unsetenv("TZ");
    }
}

} // namespace
} // namespace quorvane
