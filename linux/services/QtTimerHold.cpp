#include "services/QtTimerHold.h"

namespace quorvane {

void QtTimerHold::hold() {
    ++m_holds;
}

void QtTimerHold::release() {
    if (m_holds == 0) {
        return;
    }
    if (--m_holds == 0) {
        emit released();
    }
}

} // namespace quorvane
