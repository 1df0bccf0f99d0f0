#include "platform/QtTimerScheduler.h"

#include "EventLoopWait.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
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

TEST_F(QtTimerSchedulerTest, FiresRepeatedlyAfterAFullPeriodAndNeverInsideTheSchedulingCall) {
    int fires = 0;
    int slowFires = 0;
    int tinyFires = 0;
    auto timer = m_scheduler.scheduleRepeating(0.02, [&] { ++fires; });
    auto slow = m_scheduler.scheduleRepeating(60.0, [&] { ++slowFires; });
    auto tiny = m_scheduler.scheduleRepeating(1e-6, [&] { ++tinyFires; });
    EXPECT_EQ(fires + tinyFires, 0);
    EXPECT_EQ(timer->periodSeconds(), 0.02);
    ASSERT_TRUE(waitUntil([&] { return fires >= 3 && tinyFires >= 2; }));
    EXPECT_EQ(slowFires, 0);
}

TEST_F(QtTimerSchedulerTest, InvalidatingOrDestroyingStopsTheFiresEvenFromTheirOwnFire) {
    int fires[4] = {};
    std::unique_ptr<RepeatingTimer> timers[4];
    timers[0] = m_scheduler.scheduleRepeating(0.005, [&] { ++fires[0]; });
    timers[1] = m_scheduler.scheduleRepeating(0.005, [&] { ++fires[1]; });
    timers[2] = m_scheduler.scheduleRepeating(0.005, [&] { ++fires[2], timers[2]->invalidate(); });
    timers[3] = m_scheduler.scheduleRepeating(0.005, [&] { ++fires[3], timers[3].reset(); });
    ASSERT_TRUE(waitUntil([&] { return fires[0] >= 1 && fires[1] >= 1 && fires[2] >= 1 && fires[3] >= 1; }));
    timers[0]->invalidate();
    timers[0]->invalidate();
    timers[1].reset();
    const std::vector<int> before(fires, fires + 4);
    letASentinelFire(5);

    EXPECT_EQ(std::vector<int>(fires, fires + 4), before);
    EXPECT_EQ(before[2], 1);
    EXPECT_EQ(before[3], 1);
    EXPECT_EQ(timers[3], nullptr);
    EXPECT_EQ(timers[0]->periodSeconds(), 0.005);
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
