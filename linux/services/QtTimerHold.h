// Holds the repeating timers' fires while a menu is open, as AppKit's run loop does while it tracks a menu.
#pragma once

#include <QObject>

namespace quorvane {

// On the Mac the timers run in the run loop's default mode, which waits
// while a menu is open: a fire that comes due meanwhile arrives once the
// menu closes. Each open menu holds; the fires wait until the last one
// lets go. Holding and letting go come in pairs from each holder.
class QtTimerHold : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    void hold();
    void release();
    bool isHeld() const { return m_holds > 0; }

signals:
    // The last hold was let go.
    void released();

private:
    int m_holds = 0;
};

} // namespace quorvane
