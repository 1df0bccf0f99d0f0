// Makes repeating timers on the Qt event loop of the thread that asks.
#pragma once

#include "platform/RepeatingTimer.h"

#include <functional>
#include <memory>

namespace quorvane {

// Timers fire on the event loop of the thread that scheduled them (the main
// thread, in this program), between other events and never inside
// scheduleRepeating itself.
class QtTimerScheduler : public TimerScheduler {
public:
    std::unique_ptr<RepeatingTimer> scheduleRepeating(double periodSeconds,
                                                      std::function<void()> onFire) override;
};

} // namespace quorvane
