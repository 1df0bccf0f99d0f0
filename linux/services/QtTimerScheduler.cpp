#include "services/QtTimerScheduler.h"

#include "services/QtRepeatingTimer.h"

#include <utility>

namespace quorvane {

std::unique_ptr<RepeatingTimer> QtTimerScheduler::scheduleRepeating(double periodSeconds,
                                                                    std::function<void()> onFire) {
    return std::make_unique<QtRepeatingTimer>(periodSeconds, std::move(onFire), m_hold);
}

} // namespace quorvane
