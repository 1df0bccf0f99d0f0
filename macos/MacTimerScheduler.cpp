#include "MacTimerScheduler.h"

#include "MacRepeatingTimer.h"

#include <utility>

namespace quorvane {

std::unique_ptr<RepeatingTimer> MacTimerScheduler::scheduleRepeating(double periodSeconds,
                                                                     std::function<void()> onFire) {
    return std::make_unique<MacRepeatingTimer>(periodSeconds, std::move(onFire));
}

} // namespace quorvane
