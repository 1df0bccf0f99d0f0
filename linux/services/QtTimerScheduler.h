// Makes repeating timers on the Qt event loop of the thread that asks.
#pragma once

#include "platform/RepeatingTimer.h"

#include <functional>
#include <memory>

namespace quorvane {

class QtTimerHold;

// Timers fire on the event loop of the thread that scheduled them (the main
// thread, in this program), between other events and never inside
// scheduleRepeating itself.
class QtTimerScheduler : public TimerScheduler {
public:
    // The timers' fires wait while `hold` is held; it outlives the scheduler and its timers.
    explicit QtTimerScheduler(QtTimerHold* hold = nullptr)
        : m_hold(hold) {}

    std::unique_ptr<RepeatingTimer> scheduleRepeating(double periodSeconds,
                                                      std::function<void()> onFire) override;

private:
    QtTimerHold* m_hold;
};

} // namespace quorvane
