// A clock the test sets and advances, in a time zone the test chooses.
#pragma once

#include "platform/Clock.h"

#include <string>

namespace quorvane {

class FakeClock : public Clock {
public:
    explicit FakeClock(Timestamp now = Timestamp{}, std::string timeZoneId = "UTC")
        : m_now(now)
        , m_timeZoneId(std::move(timeZoneId)) {}

    Timestamp now() const override { return m_now; }
    std::string timeZoneId() const override { return m_timeZoneId; }

    void advance(double seconds) { m_now = m_now.plusSeconds(seconds); }

private:
    Timestamp m_now;
    std::string m_timeZoneId;
};

} // namespace quorvane
