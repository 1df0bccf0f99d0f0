#include "platform/QtRepeatingTimer.h"

#include <QTimer>

#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace quorvane {

namespace {

std::optional<int> intervalMs(double periodSeconds) {
    // Written so that NaN fails the test too.
    double ms = std::round(periodSeconds * 1000.0);
    if (!(ms >= 1.0 && ms <= static_cast<double>(std::numeric_limits<int>::max()))) {
        // Sub-millisecond positive periods still fire, as often as Qt can.
        if (periodSeconds > 0.0 && ms < 1.0) {
            return 1;
        }
        return std::nullopt;
    }
    return static_cast<int>(ms);
}

} // namespace

QtRepeatingTimer::QtRepeatingTimer(double periodSeconds, std::function<void()> onFire)
    : m_periodSeconds(periodSeconds) {
    std::optional<int> interval = intervalMs(periodSeconds);
    if (!interval) {
        return;
    }
    m_timer = new QTimer();
    m_timer->setSingleShot(false);
    m_timer->setInterval(*interval);
    QObject::connect(m_timer, &QTimer::timeout, m_timer, [fire = std::move(onFire)] { fire(); });
    m_timer->start();
}

QtRepeatingTimer::~QtRepeatingTimer() {
    invalidate();
}

void QtRepeatingTimer::invalidate() {
    if (m_timer == nullptr) {
        return;
    }
    m_timer->stop();
    m_timer->disconnect();
    m_timer->deleteLater();
    m_timer = nullptr;
}

} // namespace quorvane
