// A repeating timer on the Qt event loop, as the scheduler hands it to the program.
#pragma once

#include "platform/RepeatingTimer.h"

#include <functional>

class QTimer;

namespace quorvane {

// A period Qt can time (a whole number of milliseconds from 1 up to INT_MAX,
// about 24.8 days, rounded from the seconds given) fires every period, the
// first time one period after construction. Any other period (not a number,
// infinite, zero, negative, or longer) never fires: such a timer only answers
// its period.
class QtRepeatingTimer : public RepeatingTimer {
public:
    QtRepeatingTimer(double periodSeconds, std::function<void()> onFire);
    // May run from inside the timer's own callback.
    ~QtRepeatingTimer() override;

    QtRepeatingTimer(const QtRepeatingTimer&) = delete;
    QtRepeatingTimer& operator=(const QtRepeatingTimer&) = delete;

    void invalidate() override;
    double periodSeconds() const override { return m_periodSeconds; }

private:
    double m_periodSeconds;
    // Owned, but deleted later rather than at once: the timer may be
    // invalidated or destroyed while QTimer is still emitting its timeout.
    QTimer* m_timer = nullptr;
};

} // namespace quorvane
