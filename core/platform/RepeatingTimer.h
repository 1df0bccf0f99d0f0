// A repeating timer on the main loop, and the scheduler that makes them.
#pragma once

#include <functional>
#include <memory>

namespace quorvane {

// Stops firing when invalidated or destroyed, whichever comes first.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;
    virtual void invalidate() = 0;
    virtual double periodSeconds() const = 0;
};

class TimerScheduler {
public:
    virtual ~TimerScheduler() = default;

    // The first fire comes one full period after this call, never at once.
    // Periods too long for the platform's timer never fire.
    virtual std::unique_ptr<RepeatingTimer> scheduleRepeating(double periodSeconds,
                                                              std::function<void()> onFire) = 0;
};

} // namespace quorvane
