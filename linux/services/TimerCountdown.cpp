#include "services/TimerCountdown.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvane {

TimerCountdown::TimerCountdown(double periodMs)
    : m_periodMs(periodMs)
    , m_remainingMs(periodMs) {}

int TimerCountdown::nextWaitMs() const {
    const double wait =
        std::clamp(std::ceil(m_remainingMs), 1.0, static_cast<double>(std::numeric_limits<int>::max()));
    return static_cast<int>(wait);
}

bool TimerCountdown::advance(double waitedMs) {
    m_remainingMs -= waitedMs;
    // Half a millisecond is as close as the steps' whole milliseconds come.
    if (m_remainingMs > 0.5) {
        return false;
    }
    // The next period counts from when this one was due, not from when the
    // step ended, so lateness does not add up over the periods.
    m_remainingMs += m_periodMs;
    if (m_remainingMs < 1.0) {
        m_remainingMs = m_periodMs;
    }
    return true;
}

} // namespace quorvane
