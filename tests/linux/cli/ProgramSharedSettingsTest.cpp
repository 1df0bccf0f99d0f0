#include "ProgramHarness.h"
#include "balance/BalanceResponse.h"
#include "fakes/FakeClock.h"
#include "icu/IcuFormatter.h"
#include "platform/Defaults.h"
#include "services/QtSettingsStore.h"
#include "services/SystemClock.h"
#include "tracking/BalanceHistory.h"
#include "tracking/SpendBaselines.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

// The desktop app and `quorvane status` (which a status bar runs every
// minute) share one settings file. The app is played here by the test
// process, holding the file open the whole time as the app does; each
// `status` is a process of its own. They refresh in turn, and every sample
// and the first baseline of the day survive.
TEST_F(ProgramTest, TheAppAndTheCommandLineRefreshingInTurnLoseNoSampleAndNoBaseline) {
    constexpr int kRounds = 15;
    QtSettingsStore appStore(program.settingsFile());
    Defaults defaults(appStore);
    FakeClock clock(SystemClock().now());
    const IcuFormatter formatter("en_US");
    BalanceHistory history(defaults, clock);
    SpendBaselines baselines(defaults, clock, formatter);
    ASSERT_EQ(history.allHistory().size(), 0u) << "the app has read the file before the first command";

    // The day's first reading, 110, is the command line's.
    program.answerBalances({{"USD", "110.00"}});
    program.saveKey();

    const BalanceResponse lower{true, {{"USD", "100.00", "0.00", "100.00"}}};
    for (int round = 0; round < kRounds; ++round) {
        ASSERT_EQ(program.run({"status"}).exitCode, 0);
        clock.advance(1);
        baselines.updateBaselinesIfNeeded(lower);
        history.recordHistory(lower);
    }

    QtSettingsStore fresh(program.settingsFile());
    Defaults reread(fresh);
    EXPECT_EQ(BalanceHistory(reread, clock).allHistory().size(), 1u + 2u * kRounds);
    // The day's baseline is the first reading's, 110, whoever read it.
    EXPECT_EQ(
        SpendBaselines(reread, clock, formatter).spentToday(Decimal::parse("100").value(), "USD").toString(),
        "10");
}

} // namespace
} // namespace quorvane
