// The system's clock and the user's time zone, as the operating system reports them now.
#pragma once

#include "platform/Clock.h"

#include <string>

namespace quorvane {

// Nothing is cached: a change of the system time or of the zone (a new TZ,
// a new /etc/localtime) shows at the next call.
class SystemClock : public Clock {
public:
    // Wall-clock time with the system clock's full sub-second precision.
    Timestamp now() const override;
    // The IANA id Qt reads from TZ or /etc/localtime ("Europe/Berlin");
    // "UTC" when the system names none.
    std::string timeZoneId() const override;
};

} // namespace quorvane
