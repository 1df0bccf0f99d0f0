#include "MacClock.h"

#import "NSString+QVStdString.h"

#import <Foundation/Foundation.h>

namespace quorvane {

Timestamp MacClock::now() const {
    // Core Foundation's absolute time counts from the same reference date as Timestamp.
    return Timestamp{CFAbsoluteTimeGetCurrent()};
}

std::string MacClock::timeZoneId() const {
    return [[NSTimeZone localTimeZone].name qv_stdString];
}

} // namespace quorvane
