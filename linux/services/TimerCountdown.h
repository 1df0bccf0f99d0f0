// The wait before a timer's next fire, in steps a QTimer can take, for periods longer than it can.
#pragma once

namespace quorvane {

// QTimer takes at most INT_MAX milliseconds (about 24.8 days). A longer
// period is waited out in steps of at most that: each step says how long it
// waited, and the last one of a period says the fire has come due.
class TimerCountdown {
public:
    explicit TimerCountdown(double periodMs);

    // Between 1 and INT_MAX.
    int nextWaitMs() const;
    // After waiting `waitedMs`: true when the period is over, and the next one has begun.
    bool advance(double waitedMs);

private:
    double m_periodMs;
    double m_remainingMs;
};

} // namespace quorvane
