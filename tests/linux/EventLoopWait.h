// Runs the Qt event loop until a condition holds, for tests that wait on the network or a timer.
#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <functional>

namespace quorvane {

// True once `done` holds; false when `limit` passes first. The limit is a
// guard against a hang, never a measurement: keep it generous.
inline bool waitUntil(const std::function<bool()>& done,
                      std::chrono::milliseconds limit = std::chrono::seconds(15)) {
    QDeadlineTimer deadline(limit);
    QEventLoop loop;
    QTimer poll;
    poll.setInterval(5);
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done() || deadline.hasExpired()) {
            loop.quit();
        }
    });
    if (!done()) {
        poll.start();
        loop.exec();
    }
    return done();
}

// Lets every event already posted run, and the ones they post in turn, by
// waiting for a zero-delay timer queued behind them.
inline void drainPostedEvents() {
    bool reached = false;
    QTimer::singleShot(0, [&] { reached = true; });
    waitUntil([&] { return reached; });
    reached = false;
    QTimer::singleShot(0, [&] { reached = true; });
    waitUntil([&] { return reached; });
}

} // namespace quorvane
