// A point in time as seconds since 2001-01-01T00:00:00Z, the reference date of the stored history.
#pragma once

#include <compare>

namespace quorvane {

// Kept as the same double the stored history writes, so a sample read back
// compares equal to the one that was recorded.
struct Timestamp {
    // Seconds between 1970-01-01T00:00:00Z and the reference date.
    static constexpr double kUnixEpochOffset = 978307200.0;

    double secondsSinceReferenceDate = 0.0;

    static constexpr Timestamp fromUnixSeconds(double unixSeconds) {
        return Timestamp{unixSeconds - kUnixEpochOffset};
    }
    constexpr double unixSeconds() const { return secondsSinceReferenceDate + kUnixEpochOffset; }
    constexpr Timestamp plusSeconds(double seconds) const {
        return Timestamp{secondsSinceReferenceDate + seconds};
    }

    friend constexpr auto operator<=>(const Timestamp&, const Timestamp&) = default;
};

} // namespace quorvane
