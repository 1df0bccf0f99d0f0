// A repeating NSTimer on the main run loop, as the scheduler hands it to the program.
#pragma once

#include "platform/RepeatingTimer.h"

#include <functional>
#include <memory>

namespace quorvane {

// Fires every period in the main run loop's default mode, the first time one
// full period after construction. A period that is not a positive, finite
// number makes no timer at all (NSTimer would turn zero or less into a tenth
// of a millisecond); such a timer only answers its period. Periods too long
// for a date never come due. Each fire runs as a task of its own on the main
// queue; one still queued when the timer is invalidated does nothing.
class MacRepeatingTimer : public RepeatingTimer {
public:
    MacRepeatingTimer(double periodSeconds, std::function<void()> onFire);
    // May run from inside the timer's own fire.
    ~MacRepeatingTimer() override;

    MacRepeatingTimer(const MacRepeatingTimer&) = delete;
    MacRepeatingTimer& operator=(const MacRepeatingTimer&) = delete;

    void invalidate() override;
    double periodSeconds() const override { return m_periodSeconds; }

private:
    struct Impl;
    double m_periodSeconds;
    std::unique_ptr<Impl> m_impl;
};

} // namespace quorvane
