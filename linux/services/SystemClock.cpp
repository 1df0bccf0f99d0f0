#include "services/SystemClock.h"

#include <QByteArray>
#include <QTimeZone>

#include <chrono>

namespace quorvane {

Timestamp SystemClock::now() const {
    std::chrono::duration<double> sinceUnixEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Timestamp::fromUnixSeconds(sinceUnixEpoch.count());
}

std::string SystemClock::timeZoneId() const {
    QByteArray id = QTimeZone::systemTimeZoneId();
    return id.isEmpty() ? std::string("UTC") : id.toStdString();
}

} // namespace quorvane
