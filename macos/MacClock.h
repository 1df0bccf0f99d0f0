// The system clock and the Mac's current time zone.
#pragma once

#include "platform/Clock.h"

#include <string>

namespace quorvane {

class MacClock : public Clock {
public:
    Timestamp now() const override;
    // The local time zone follows the system's setting while the program runs.
    std::string timeZoneId() const override;
};

} // namespace quorvane
