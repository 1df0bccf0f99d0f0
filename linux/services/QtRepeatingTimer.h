// A repeating timer on the Qt event loop, as the scheduler hands it to the program.
#pragma once

#include "platform/RepeatingTimer.h"
#include "services/TimerCountdown.h"

#include <QElapsedTimer>

#include <functional>
#include <memory>
#include <optional>

class QTimer;

namespace quorvane {

class QtTimerHold;

// Any finite positive period fires every period, the first time one full
// period after construction, to the millisecond (a precise QTimer: Qt's
// default coarse one may fire 5 % early). Periods longer than QTimer takes
// are waited out in steps. Infinite, zero, negative, not-a-number and periods
// beyond a 64-bit whole second never fire: such a timer only answers its period.
//
// A fire that comes due is carried out as a task of its own on the event
// loop, after the timer's own event; one still queued when the timer is
// invalidated does nothing. While `hold` is held, a fire that comes due waits
// and is carried out once when the hold is let go.
class QtRepeatingTimer : public RepeatingTimer {
public:
    QtRepeatingTimer(double periodSeconds, std::function<void()> onFire, QtTimerHold* hold = nullptr);
    // May run from inside the timer's own callback.
    ~QtRepeatingTimer() override;

    QtRepeatingTimer(const QtRepeatingTimer&) = delete;
    QtRepeatingTimer& operator=(const QtRepeatingTimer&) = delete;

    void invalidate() override;
    double periodSeconds() const override { return m_periodSeconds; }

    // The period in milliseconds for a period that fires; nothing for one that never does.
    static std::optional<double> firingPeriodMs(double periodSeconds);

private:
    void stepEnded();
    void comeDue();

    double m_periodSeconds;
    // Shared with every queued fire, which checks it when it runs.
    std::shared_ptr<bool> m_alive;
    std::shared_ptr<std::function<void()>> m_onFire;
    QtTimerHold* m_hold;
    bool m_heldFire = false;
    // Owned, but deleted later rather than at once: the timer may be
    // invalidated or destroyed while QTimer is still emitting its timeout.
    QTimer* m_timer = nullptr;
    // For periods longer than one QTimer interval.
    std::optional<TimerCountdown> m_countdown;
    QElapsedTimer m_stepStarted;
};

} // namespace quorvane
