// Makes the repeating timers of the program as NSTimers on the main run loop.
#pragma once

#include "platform/RepeatingTimer.h"

#include <functional>
#include <memory>

namespace quorvane {

class MacTimerScheduler : public TimerScheduler {
public:
    std::unique_ptr<RepeatingTimer> scheduleRepeating(double periodSeconds,
                                                      std::function<void()> onFire) override;
};

} // namespace quorvane
