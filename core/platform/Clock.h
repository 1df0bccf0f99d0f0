// The current time and the user's current time zone.
#pragma once

#include "values/Timestamp.h"

#include <string>

namespace quorvane {

class Clock {
public:
    virtual ~Clock() = default;

    virtual Timestamp now() const = 0;
    // An IANA time zone identifier ("Europe/Berlin"), read anew on every call so
    // that a change of zone while the program runs is seen at the next day key.
    virtual std::string timeZoneId() const = 0;
};

} // namespace quorvane
