#include "services/QtTimerScheduler.h"

#include "EventLoopWait.h"
#include "services/QtRepeatingTimer.h"
#include "services/QtTimerHold.h"
#include "services/TimerCountdown.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

// Every check that a timer stays quiet waits for a busier timer to fire
// several times instead of for a length of time.
class QtTimerSchedulerTest : public ::testing::Test {
protected:
    void letASentinelFire(int times) {
        int fires = 0;
        auto sentinel = m_scheduler.scheduleRepeating(0.01, [&] { ++fires; });
        ASSERT_TRUE(waitUntil([&] { return fires >= times; }));
    }

    QtTimerScheduler m_scheduler;
};

// Measured against the clock, so that a fire can be late on a busy machine
// but never early: Qt's default coarse timers fire up to 5 % before time.
TEST_F(QtTimerSchedulerTest, EveryFireLandsAtTheFullPeriodNeverBefore) {
    constexpr qint64 kPeriodMs = 1250;
    QElapsedTimer clock;
    std::vector<qint64> fires;
    clock.start();
    auto timer = m_scheduler.scheduleRepeating(kPeriodMs / 1000.0, [&] { fires.push_back(clock.elapsed()); });
    ASSERT_TRUE(waitUntil([&] { return fires.size() >= 3; }));
    for (std::size_t i = 0; i < 3; ++i) {
        const qint64 due = kPeriodMs * static_cast<qint64>(i + 1);
        EXPECT_GE(fires[i], due) << "fire " << i + 1;
        EXPECT_LT(fires[i], due + 250) << "fire " << i + 1;
    }
}

TEST(QtRepeatingTimerTest, EveryFinitePositivePeriodBelowA64BitSecondFires) {
    const std::pair<double, std::optional<double>> periods[] = {
        {30.7, 30700.0},
        {1e-6, 1.0},
        // Past the longest interval QTimer takes: waited out in steps.
        {2147483.648, 2147483648.0},
        {30.0 * 86400.0, 2592000000.0},
        {9.2e18, 9.2e21},
        {9.3e18, std::nullopt},
        {std::numeric_limits<double>::max(), std::nullopt},
        {std::numeric_limits<double>::infinity(), std::nullopt},
        {std::numeric_limits<double>::quiet_NaN(), std::nullopt},
        {0.0, std::nullopt},
        {-1.0, std::nullopt},
    };
    for (const auto& [seconds, milliseconds] : periods) {
        EXPECT_EQ(QtRepeatingTimer::firingPeriodMs(seconds), milliseconds) << seconds;
    }
}

TEST(TimerCountdownTest, APeriodLongerThanQTimerTakesIsWaitedOutInStepsWithoutDrift) {
    constexpr int kMaxStep = std::numeric_limits<int>::max();
    TimerCountdown month(2592000000.0);
    EXPECT_EQ(month.nextWaitMs(), kMaxStep);
    EXPECT_FALSE(month.advance(kMaxStep));
    EXPECT_EQ(month.nextWaitMs(), 2592000000 - kMaxStep);
    // A step ends 3 ms late: the period is due, and the next one is 3 ms shorter.
    EXPECT_TRUE(month.advance(2592000000.0 - kMaxStep + 3));
    EXPECT_EQ(month.nextWaitMs(), kMaxStep);
    EXPECT_FALSE(month.advance(kMaxStep));
    EXPECT_EQ(month.nextWaitMs(), 2592000000 - kMaxStep - 3);

    TimerCountdown short_(1500.0);
    EXPECT_EQ(short_.nextWaitMs(), 1500);
    EXPECT_TRUE(short_.advance(1500.4));
    EXPECT_EQ(short_.nextWaitMs(), 1500);
}

TEST_F(QtTimerSchedulerTest, FiresWaitWhileHeldAndComeOnceAsTasksOfTheirOwn) {
    QtTimerHold hold;
    QtTimerScheduler scheduler(&hold);
    int fires = 0;
    hold.hold();
    hold.hold();
    auto timer = scheduler.scheduleRepeating(0.03, [&] { ++fires; });
    letASentinelFire(10);
    hold.release();
    letASentinelFire(5);
    EXPECT_EQ(fires, 0) << "held while any holder holds";

    hold.release();
    EXPECT_EQ(fires, 0) << "a task of its own, not inside the release";
    // Posted events only: no timer can come due in between.
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(fires, 1) << "the fires that came due while held make one";
    ASSERT_TRUE(waitUntil([&] { return fires >= 3; })) << "and the timer goes on";

    // A fire already queued when the timer is invalidated or destroyed does nothing.
    for (const bool destroy : {false, true}) {
        fires = 0;
        hold.hold();
        letASentinelFire(10);
        hold.release();
        if (destroy) {
            timer.reset();
        } else {
            timer->invalidate();
        }
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(fires, 0) << (destroy ? "destroyed" : "invalidated");
        timer = scheduler.scheduleRepeating(0.03, [&] { ++fires; });
    }
}

// Through the scheduler, not firingPeriodMs alone: a timer that fell back to
// some period for these would fire, and only this test would see it.
TEST_F(QtTimerSchedulerTest, PeriodsThatNeverFire) {
    const double periods[] = {
        std::numeric_limits<double>::quiet_NaN(),
        std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(),
        0.0,
        -1.0,
        // Beyond a 64-bit count of whole seconds.
        9.3e18,
        std::numeric_limits<double>::max(),
    };
    int fires = 0;
    std::vector<std::unique_ptr<RepeatingTimer>> timers;
    for (double period : periods) {
        timers.push_back(m_scheduler.scheduleRepeating(period, [&] { ++fires; }));
    }
    letASentinelFire(5);

    EXPECT_EQ(fires, 0);
    EXPECT_TRUE(std::isnan(timers[0]->periodSeconds()));
    for (std::size_t i = 1; i < timers.size(); ++i) {
        EXPECT_EQ(timers[i]->periodSeconds(), periods[i]);
    }
}

} // namespace
} // namespace quorvane
