#include "fakes/DelegateTest.h"

#include <cmath>
#include <limits>

namespace quorvane {
namespace {

const std::string kWhale = "\xF0\x9F\x90\x8B";
const std::string kWarning = "\xE2\x9A\xA0\xEF\xB8\x8F";

using AppDelegateRefreshTest = DelegateTest;

TEST_F(AppDelegateRefreshTest, LaunchWithoutAKeyAsksForOneAndStillStartsTheTimer) {
    delegate.applicationDidFinishLaunching();

    EXPECT_EQ(fake.desktop.log(), std::vector<std::string>{"accessory policy"});
    EXPECT_EQ(fake.statusItem.titles(), (std::vector<std::string>{kWhale + " DS", kWhale + " Key?"}));
    EXPECT_EQ(fake.statusItem.toolTips(), std::vector<std::string>{"Quorvane"});
    EXPECT_EQ(fake.statusItem.events(), (std::vector<std::string>{"attach menu", "menu", "menu"}));
    EXPECT_TRUE(fake.http.requests().empty());
    EXPECT_EQ(fake.timers.activeCount(), 1u);
    EXPECT_EQ(fake.timers.activePeriod(), 60.0);
}

TEST_F(AppDelegateRefreshTest, ASuccessfulRefreshSendsTheKeyAndRecordsEverythingInOrder) {
    fake.storeKey("  sk-blank ends  ");
    delegate.applicationDidFinishLaunching();

    ASSERT_EQ(fake.http.requests().size(), 1u);
    const HttpRequest& request = fake.http.requests()[0];
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.url, "https://api.deepseek.com/user/balance");
    EXPECT_EQ(request.timeout, std::chrono::seconds(20));
    EXPECT_EQ(request.maxBodyBytes, 4u * 1024u * 1024u);
    EXPECT_EQ(request.headers,
              (std::vector<std::pair<std::string, std::string>>{
                  {"Accept", "application/json"}, {"Authorization", "Bearer   sk-blank ends  "}}));
    EXPECT_TRUE(delegate.isRefreshing());

    fake.clock.advance(2);
    fake.http.respond(200, balanceBody({{"CNY", "70.00"}, {"USD", "12.50"}}));

    EXPECT_FALSE(delegate.isRefreshing());
    EXPECT_EQ(fake.statusItem.title(), kWhale + " $12.50");
    EXPECT_EQ(delegate.lastError(), std::nullopt);
    EXPECT_EQ(delegate.lastUpdatedAt(), fake.clock.now());
    ASSERT_TRUE(delegate.lastResponse());
    EXPECT_EQ(delegate.lastResponse()->balanceInfos.size(), 2u);
    // Baselines first, then the history, in response order.
    EXPECT_EQ(fake.settings.log(),
              (std::vector<std::string>{"set dayKey", "set dayStart.CNY", "set dayStart.USD",
                                        "set firstStart.CNY", "set firstStart.USD", "set balanceHistory"}));
    EXPECT_EQ(delegate.currentDayKey(), "2026-11-22");
    EXPECT_EQ(delegate.allHistory().size(), 2u);
    EXPECT_EQ(fake.statusItem.menuChanges(), 3) << "launch, start and end of the refresh";
}

TEST_F(AppDelegateRefreshTest, ARefreshInFlightDropsEveryOtherAndKeepsItsOwnKey) {
    fake.storeKey("sk-old");
    delegate.applicationDidFinishLaunching();
    const auto titles = fake.statusItem.titles().size();
    const int menuChanges = fake.statusItem.menuChanges();

    delegate.refreshClicked();
    fake.timers.fireActive();
    fake.desktop.answerAlert(kAlertFirstButtonReturn, "sk-new");
    delegate.setAPIKeyClicked(); // saved, but its refresh is dropped too
    EXPECT_EQ(fake.http.requests().size(), 1u);
    EXPECT_EQ(fake.statusItem.titles().size(), titles);
    EXPECT_EQ(fake.statusItem.menuChanges(), menuChanges);

    fake.http.respond(200, balanceBody({{"USD", "5"}}));
    fake.timers.fireActive();
    ASSERT_EQ(fake.http.requests().size(), 2u) << "an idle timer fire refreshes";
    EXPECT_EQ(fake.http.requests()[0].headers[1].second, "Bearer sk-old");
    EXPECT_EQ(fake.http.requests()[1].headers[1].second, "Bearer sk-new");

    // Removed while a request is in flight: its outcome still shows, then there is no key.
    delegate.removeAPIKeyClicked();
    EXPECT_EQ(fake.statusItem.title(), kWhale + " DS");
    fake.http.respond(HttpTransportError{"Bearer sk-new refused for sk-new."});
    EXPECT_EQ(delegate.lastError(), "[key] refused for [key].");
    EXPECT_EQ(fake.statusItem.title(), kWhale + " !");
    delegate.refreshClicked();
    EXPECT_EQ(fake.statusItem.title(), kWhale + " Key?");
    EXPECT_EQ(delegate.lastError(), std::nullopt);
    EXPECT_EQ(fake.http.requests().size(), 2u);
}

TEST_F(AppDelegateRefreshTest, TheTitleMarksLowBalancesAndShowsTwoFractionDigits) {
    const std::pair<std::string, std::string> cases[] = {
        {balanceBody({{"USD", "1.00"}}), kWarning + " $1.00"},
        {balanceBody({{"CNY", "10"}}), kWarning + " CN\xC2\xA5" + "10.00"},
        {balanceBody({{"USD", "12.345"}}), kWhale + " $12.34"}, // half-even
        {balanceBody({{"CNY", "50"}, {"USD", "0.5"}}), kWarning + " $0.50"},
        {balanceBody({{"USD", "not a number"}}), kWarning + " $0.00"},
        {balanceBody({}), kWhale + " 0"},
        {balanceBody({{"", "12.5"}}), kWhale + " 12.5"}, // no formatter for an empty code
    };
    for (const auto& [body, title] : cases) {
        refreshWith(200, body);
        EXPECT_EQ(fake.statusItem.title(), title) << body;
    }
}

// The only test of a status item without a button (macOS can give one).
TEST_F(AppDelegateRefreshTest, WithoutAButtonTitlesAreSkippedAndLaunchGoesOn) {
    RecordingStatusItem item(false);
    Platform platform = fake.platform();
    Platform withoutButton{item,           platform.settings,   platform.secrets,       platform.http,
                           platform.clock, platform.formatter,  platform.textSegmenter, platform.timers,
                           platform.alert, platform.pasteboard, platform.workspace,     platform.application};
    fake.storeKey("sk-test");
    AppDelegate app(withoutButton);
    app.applicationDidFinishLaunching();
    fake.http.respond(200, balanceBody({{"USD", "5"}}));

    EXPECT_TRUE(item.titles().empty());
    EXPECT_TRUE(item.toolTips().empty());
    EXPECT_EQ(item.events().front(), "attach menu");
    EXPECT_TRUE(app.lastResponse());
}

// Without the weak guard the callback writes through a dead delegate and crashes here.
TEST_F(AppDelegateRefreshTest, AnAnswerArrivingAfterTheDelegateIsGoneIsIgnored) {
    fake.storeKey("sk-test");
    AppDelegate(fake.platform()).refreshClicked();
    fake.http.respond(200, balanceBody({{"USD", "5"}}));
    EXPECT_EQ(fake.statusItem.title(), kWhale + " ...");
}

using AutoRefreshTest = DelegateTest;

TEST_F(AutoRefreshTest, StoredIntervalsGiveTheirLabelTimerPeriodAndCheckMark) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    struct Case {
        SettingValue stored;
        std::string label;
        double period;
        std::string checked; // the checked choice's label, or empty
    };
    const Case cases[] = {
        {SettingValue{std::int64_t{0}}, "1 min", 60, "1 min"},
        {SettingValue{std::nan("")}, "1 min", 60, "1 min"},
        {SettingValue{std::int64_t{45}}, "45 sec", 45, ""},
        {SettingValue{30.7}, "30 sec", 30.7, "30 sec"},
        {SettingValue{std::string("900")}, "15 min", 900, "15 min"}, // as an INI file gives it back
        {SettingValue{kInfinity}, "\xE2\x88\x9E sec", kInfinity, ""},
        {SettingValue{1e19}, "10000000000000000000 sec", 1e19, ""},
    };
    for (const Case& c : cases) {
        fake.settings.setValue("refreshInterval", c.stored);
        // The setting is read where the program reads it: at the launch.
        AppDelegate launched{fake.platform()};
        launched.applicationDidFinishLaunching();
        EXPECT_EQ(fake.timers.activePeriod(), c.period) << c.label;
        std::string submenu = "  Refresh Interval: " + c.label + " >\n";
        for (const auto& [label, seconds] : AutoRefreshSettings::kChoices) {
            submenu +=
                std::string(label == c.checked ? "    \xE2\x9C\x93 " : "      ") + std::string(label) + "\n";
        }
        EXPECT_NE(fake.statusItem.menuText().find(submenu), std::string::npos) << submenu;
    }
}

TEST_F(AutoRefreshTest, TogglingAndChoosingRebuildTheMenuAndNeverLeaveTwoTimers) {
    fake.storeKey("sk-test");
    delegate.applicationDidFinishLaunching();
    ASSERT_EQ(fake.timers.activeCount(), 1u);
    const int changes = fake.statusItem.menuChanges();

    delegate.toggleAutoRefreshClicked();
    EXPECT_EQ(fake.settings.value("autoRefreshEnabled"), SettingValue{false});
    EXPECT_EQ(fake.timers.activeCount(), 0u);
    EXPECT_FALSE(delegate.hasRefreshTimer());
    EXPECT_EQ(fake.statusItem.menuChanges(), changes + 1);

    delegate.refreshIntervalClicked(900);
    EXPECT_EQ(fake.settings.value("refreshInterval"), SettingValue{std::int64_t{900}});
    EXPECT_EQ(fake.timers.activeCount(), 0u) << "an interval chosen while off makes no timer";
    EXPECT_EQ(delegate.refreshIntervalLabel(), "15 min");
    EXPECT_EQ(fake.statusItem.menuChanges(), changes + 2);

    delegate.toggleAutoRefreshClicked();
    EXPECT_EQ(fake.settings.value("autoRefreshEnabled"), SettingValue{true});
    EXPECT_EQ(fake.timers.activePeriod(), 900.0);

    // Choosing the interval already set still restarts the period; a refresh leaves the timer alone.
    const auto created = fake.timers.createdCount();
    delegate.perform(MenuCommand::RefreshInterval, 900);
    EXPECT_EQ(fake.timers.createdCount(), created + 1);
    fake.http.respond(200, "{}");
    delegate.refreshClicked();
    EXPECT_EQ(fake.timers.createdCount(), created + 1);
    EXPECT_EQ(fake.http.requests().size(), 2u);

    EXPECT_EQ(fake.timers.activeCount(), 1u);
}

} // namespace
} // namespace quorvane
