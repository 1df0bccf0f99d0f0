#include "fakes/DelegateTest.h"

#include <cmath>
#include <limits>

namespace quorvane {
namespace {

class AutoRefreshTest : public DelegateTest {
protected:
    // The interval submenu's choices as "label:checked".
    std::vector<std::string> choices() const {
        std::vector<std::string> result;
        for (const MenuItem& item : fake.statusItem.menu()) {
            if (item.title != "Settings") {
                continue;
            }
            for (const MenuItem& setting : item.submenu) {
                for (const MenuItem& choice : setting.submenu) {
                    result.push_back(choice.title + ":" + std::to_string(choice.tag) +
                                     (choice.checked ? "*" : ""));
                }
            }
        }
        return result;
    }
};

TEST_F(AutoRefreshTest, StoredIntervalsGiveTheirLabelTimerPeriodAndCheckMark) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    struct Case {
        std::optional<SettingValue> stored;
        std::string label;
        double period;
        std::string checked; // the checked choice's label, or empty
    };
    const Case cases[] = {
        {std::nullopt, "1 min", 60, "1 min"},
        {SettingValue{std::int64_t{0}}, "1 min", 60, "1 min"},
        {SettingValue{std::nan("")}, "1 min", 60, "1 min"},
        {SettingValue{std::string("not a number")}, "1 min", 60, "1 min"},
        {SettingValue{std::int64_t{45}}, "45 sec", 45, ""},
        {SettingValue{30.7}, "30 sec", 30.7, "30 sec"},
        {SettingValue{std::string("900")}, "15 min", 900, "15 min"}, // as an INI file gives it back
        {SettingValue{kInfinity}, "\xE2\x88\x9E sec", kInfinity, ""},
        {SettingValue{1e19}, "10000000000000000000 sec", 1e19, ""},
    };
    for (const Case& c : cases) {
        if (c.stored) {
            fake.settings.setValue("refreshInterval", *c.stored);
        } else {
            fake.settings.remove("refreshInterval");
        }
        // The setting is read where the program reads it: at the launch.
        AppDelegate launched{fake.platform()};
        launched.applicationDidFinishLaunching();
        EXPECT_EQ(launched.refreshIntervalLabel(), c.label) << c.label;
        EXPECT_EQ(fake.timers.activePeriod(), c.period) << c.label;
        std::vector<std::string> expected;
        for (const auto& [label, seconds] : AutoRefreshSettings::kChoices) {
            expected.push_back(std::string(label) + ":" + std::to_string(seconds) +
                               (label == c.checked ? "*" : ""));
        }
        EXPECT_EQ(choices(), expected) << c.label;
    }
}

TEST_F(AutoRefreshTest, TogglingAndChoosingNeverLeaveTwoTimers) {
    delegate.applicationDidFinishLaunching();
    ASSERT_EQ(fake.timers.activeCount(), 1u);

    delegate.toggleAutoRefreshClicked();
    EXPECT_EQ(fake.settings.value("autoRefreshEnabled"), SettingValue{false});
    EXPECT_EQ(fake.timers.activeCount(), 0u);
    EXPECT_FALSE(delegate.hasRefreshTimer());

    delegate.refreshIntervalClicked(900);
    EXPECT_EQ(fake.settings.value("refreshInterval"), SettingValue{std::int64_t{900}});
    EXPECT_EQ(fake.timers.activeCount(), 0u) << "an interval chosen while off makes no timer";
    EXPECT_EQ(delegate.refreshIntervalLabel(), "15 min");

    delegate.toggleAutoRefreshClicked();
    EXPECT_EQ(fake.settings.value("autoRefreshEnabled"), SettingValue{true});
    EXPECT_EQ(fake.timers.activeCount(), 1u);
    EXPECT_EQ(fake.timers.activePeriod(), 900.0);

    // Choosing the interval already set still restarts the period.
    const auto created = fake.timers.createdCount();
    delegate.perform(MenuCommand::RefreshInterval, 900);
    EXPECT_EQ(fake.timers.createdCount(), created + 1);
    EXPECT_EQ(fake.timers.activeCount(), 1u);

    for (int i = 0; i < 5; ++i) {
        delegate.perform(MenuCommand::ToggleAutoRefresh);
        delegate.perform(MenuCommand::RefreshInterval, 30);
        EXPECT_LE(fake.timers.activeCount(), 1u);
    }
}

TEST_F(AutoRefreshTest, TheSettingsCommandsRebuildTheMenuAndRefreshDoesNotTouchTheTimer) {
    fake.storeKey("sk-test");
    delegate.applicationDidFinishLaunching();
    const auto created = fake.timers.createdCount();
    const int changes = fake.statusItem.menuChanges();

    delegate.toggleAutoRefreshClicked();
    EXPECT_EQ(fake.statusItem.menuChanges(), changes + 1);
    delegate.refreshIntervalClicked(30);
    EXPECT_EQ(fake.statusItem.menuChanges(), changes + 2);

    delegate.toggleAutoRefreshClicked();
    const auto afterToggle = fake.timers.createdCount();
    EXPECT_EQ(afterToggle, created + 1);
    delegate.refreshClicked(); // dropped: the launch refresh is in flight
    fake.http.respond(200, "{}");
    delegate.refreshClicked();
    EXPECT_EQ(fake.timers.createdCount(), afterToggle);
    EXPECT_EQ(fake.http.requests().size(), 2u);
}

} // namespace
} // namespace quorvane
