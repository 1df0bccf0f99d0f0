#include "platform/QtTimerScheduler.h"

#include "EventLoopWait.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

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

TEST_F(QtTimerSchedulerTest, FiresRepeatedlyAndNeverInsideTheSchedulingCall) {
    int fires = 0;
    auto timer = m_scheduler.scheduleRepeating(0.02, [&] { ++fires; });
    EXPECT_EQ(fires, 0);
    EXPECT_EQ(timer->periodSeconds(), 0.02);
    ASSERT_TRUE(waitUntil([&] { return fires >= 3; }));
}

TEST_F(QtTimerSchedulerTest, TheFirstFireWaitsAFullPeriod) {
    int fires = 0;
    auto timer = m_scheduler.scheduleRepeating(60.0, [&] { ++fires; });
    drainPostedEvents();
    letASentinelFire(3);
    EXPECT_EQ(fires, 0);
}

TEST_F(QtTimerSchedulerTest, InvalidatingOrDestroyingStopsTheFires) {
    int invalidatedFires = 0;
    int destroyedFires = 0;
    auto invalidated = m_scheduler.scheduleRepeating(0.005, [&] { ++invalidatedFires; });
    auto destroyed = m_scheduler.scheduleRepeating(0.005, [&] { ++destroyedFires; });
    ASSERT_TRUE(waitUntil([&] { return invalidatedFires >= 1 && destroyedFires >= 1; }));

    invalidated->invalidate();
    invalidated->invalidate();
    destroyed.reset();
    int invalidatedBefore = invalidatedFires;
    int destroyedBefore = destroyedFires;
    letASentinelFire(5);

    EXPECT_EQ(invalidatedFires, invalidatedBefore);
    EXPECT_EQ(destroyedFires, destroyedBefore);
    EXPECT_EQ(invalidated->periodSeconds(), 0.005);
}

TEST_F(QtTimerSchedulerTest, ATimerMayEndItselfFromItsOwnFire) {
    int invalidatedFires = 0;
    int destroyedFires = 0;
    std::unique_ptr<RepeatingTimer> invalidated;
    std::unique_ptr<RepeatingTimer> destroyed;
    invalidated = m_scheduler.scheduleRepeating(0.005, [&] {
        ++invalidatedFires;
        invalidated->invalidate();
    });
    destroyed = m_scheduler.scheduleRepeating(0.005, [&] {
        ++destroyedFires;
        destroyed.reset();
    });
    ASSERT_TRUE(waitUntil([&] { return invalidatedFires == 1 && destroyedFires == 1; }));
    letASentinelFire(5);

    EXPECT_EQ(invalidatedFires, 1);
    EXPECT_EQ(destroyedFires, 1);
    EXPECT_EQ(destroyed, nullptr);
}

TEST_F(QtTimerSchedulerTest, PeriodsQtCannotTimeNeverFire) {
    const double periods[] = {
        std::numeric_limits<double>::quiet_NaN(),
        std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(),
        0.0,
        -1.0,
        // One millisecond past the longest interval QTimer takes.
        2147483.648,
        9.3e18,
        1e300,
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
        timers[i]->invalidate();
    }
}

TEST_F(QtTimerSchedulerTest, PeriodsBelowAMillisecondStillFire) {
    int fires = 0;
    auto timer = m_scheduler.scheduleRepeating(1e-6, [&] { ++fires; });
    ASSERT_TRUE(waitUntil([&] { return fires >= 2; }));
}

} // namespace
} // namespace quorvane
