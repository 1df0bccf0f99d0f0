#include "services/QtRepeatingTimer.h"

#include "services/QtTimerHold.h"

#include <QTimer>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace quorvane {

namespace {

// 2^63 seconds: the longest period a 64-bit count of whole seconds holds.
constexpr double kLongestPeriodSeconds = 9223372036854775808.0;

} // namespace

std::optional<double> QtRepeatingTimer::firingPeriodMs(double periodSeconds) {
    // Written so that NaN fails the test too.
    if (!(periodSeconds > 0.0 && periodSeconds < kLongestPeriodSeconds)) {
        return std::nullopt;
    }
    // Sub-millisecond periods fire as often as Qt can, every millisecond.
    return std::max(1.0, std::round(periodSeconds * 1000.0));
}

QtRepeatingTimer::QtRepeatingTimer(double periodSeconds, std::function<void()> onFire, QtTimerHold* hold)
    : m_periodSeconds(periodSeconds)
    , m_alive(std::make_shared<bool>(true))
    , m_onFire(std::make_shared<std::function<void()>>(std::move(onFire)))
    , m_hold(hold) {
    const std::optional<double> periodMs = firingPeriodMs(periodSeconds);
    if (!periodMs) {
        return;
    }
    m_timer = new QTimer();
    m_timer->setTimerType(Qt::PreciseTimer);
    if (*periodMs <= static_cast<double>(std::numeric_limits<int>::max())) {
        // Qt schedules each next fire from the last one's due time, so a
        // repeating timer does not drift.
        m_timer->setSingleShot(false);
        m_timer->setInterval(static_cast<int>(*periodMs));
        QObject::connect(m_timer, &QTimer::timeout, m_timer, [this] { comeDue(); });
    } else {
        m_countdown.emplace(*periodMs);
        m_timer->setSingleShot(true);
        m_timer->setInterval(m_countdown->nextWaitMs());
        QObject::connect(m_timer, &QTimer::timeout, m_timer, [this] { stepEnded(); });
        m_stepStarted.start();
    }
    m_timer->start();
}

QtRepeatingTimer::~QtRepeatingTimer() {
    invalidate();
}

void QtRepeatingTimer::stepEnded() {
    const bool due = m_countdown->advance(static_cast<double>(m_stepStarted.restart()));
    m_timer->start(m_countdown->nextWaitMs());
    if (due) {
        comeDue();
    }
}

void QtRepeatingTimer::comeDue() {
    if (m_hold && m_hold->isHeld()) {
        // Fires that come due while a menu is open make one fire when it closes, as on the Mac.
        if (!m_heldFire) {
            m_heldFire = true;
            QObject::connect(
                m_hold, &QtTimerHold::released, m_timer,
                [this, alive = m_alive] {
                    if (*alive) {
                        m_heldFire = false;
                        comeDue();
                    }
                },
                Qt::SingleShotConnection);
        }
        return;
    }
    QTimer::singleShot(0, m_timer, [alive = m_alive, onFire = m_onFire] {
        if (*alive) {
            (*onFire)();
        }
    });
}

void QtRepeatingTimer::invalidate() {
    *m_alive = false;
    if (m_timer == nullptr) {
        return;
    }
    m_timer->stop();
    m_timer->disconnect();
    m_timer->deleteLater();
    m_timer = nullptr;
}

} // namespace quorvane
