#include "app/AppDelegate.h"
#include "fakes/BalanceBody.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quorvane {
namespace {

const std::string kWarning = "\xE2\x9A\xA0\xEF\xB8\x8F";

// One run of the app, step by step. A step is an answer ("USD 0.80", or
// "USD 5.00 CNY 5" for two currencies, the shown one being USD), "fail" (an
// HTTP 500), "no key", "restart" (a new app over the same stores), "command
// line" (a command over them, which tells no one), or "off" and "on" for the
// user's setting.
struct NoticeCase {
    std::string name;
    std::vector<std::string> steps;
    // The body of each notification shown, in order.
    std::vector<std::string> told;
    // The currencies whose fall is on record at the end.
    std::vector<std::string> recorded;
};

class NoticeRun {
public:
    void step(const std::string& step) {
        if (step == "restart" || step == "command line") {
            Platform platform = fake.platform();
            if (step == "command line") {
                platform.notifier = nullptr;
            }
            delegate = std::make_unique<AppDelegate>(platform);
        } else if (step == "off" || step == "on") {
            delegate->setLowBalanceNotificationsEnabled(step == "on");
        } else if (step == "no key") {
            fake.secrets.remove("Quorvane", "DeepSeekAPIKey");
            delegate->refreshClicked();
        } else {
            fake.storeKey("sk-test");
            delegate->refreshClicked();
            if (step == "fail") {
                fake.http.respond(500, "busy");
            } else {
                fake.http.respond(200, balanceBody(answer(step)));
            }
        }
    }

    std::vector<std::string> recorded() const {
        std::vector<std::string> currencies;
        for (const auto& [key, value] : fake.settings.values()) {
            if (key.rfind(LowBalanceNotice::kNotifiedPrefix, 0) == 0) {
                currencies.push_back(key.substr(LowBalanceNotice::kNotifiedPrefix.size()));
            }
        }
        return currencies;
    }

    FakePlatform fake;
    std::unique_ptr<AppDelegate> delegate = std::make_unique<AppDelegate>(fake.platform());

private:
    static std::vector<std::pair<std::string, std::string>> answer(const std::string& step) {
        std::vector<std::pair<std::string, std::string>> totals;
        for (std::size_t at = 0; at < step.size();) {
            const std::size_t blank = step.find(' ', at);
            std::size_t end = step.find(' ', blank + 1);
            end = end == std::string::npos ? step.size() : end;
            totals.emplace_back(step.substr(at, blank - at), step.substr(blank + 1, end - blank - 1));
            at = end + 1;
        }
        return totals;
    }
};

std::string lowUsd(const std::string& amount) {
    return amount + " left, at or below the warning level of $1.00.";
}

TEST(LowBalanceNoticeTest, AFallOfTheShownBalanceIsToldOnceUntilItRecovers) {
    const std::vector<NoticeCase> cases = {
        {"healthy, low, low, healthy, low",
         {"USD 5.00", "USD 0.80", "USD 0.50", "USD 1.01", "USD 1.00"},
         {lowUsd("$0.80"), lowUsd("$1.00")},
         {"USD"}},
        {"recovering forgets the record", {"USD 0.80", "USD 12.00"}, {lowUsd("$0.80")}, {}},
        {"a restart while low",
         {"USD 0.80", "restart", "USD 0.70", "restart", "USD 0.60"},
         {lowUsd("$0.80")},
         {"USD"}},
        {"a failure, no key and an amount that is no number change nothing",
         {"USD 0.80", "fail", "no key", "USD abc", "USD 0.70", "USD 9", "USD abc", "fail", "USD 0.60"},
         {lowUsd("$0.80"), lowUsd("$0.60")},
         {"USD"}},
        {"no number is not low", {"USD abc", "USD 1e999"}, {}, {}},
        {"each currency has its own record",
         {"USD 0.80", "CNY 5", "USD 0.70", "CNY 9.99", "CNY 10.01", "CNY 4"},
         {lowUsd("$0.80"),
          "CN\xC2\xA5"
          "5.00 left, at or below the warning level of CN\xC2\xA5"
          "10.00.",
          "CN\xC2\xA5"
          "4.00 left, at or below the warning level of CN\xC2\xA5"
          "10.00."},
         {"CNY", "USD"}},
        {"only the balance the title shows", {"USD 5.00 CNY 5", "CNY 5 USD 0.8"}, {lowUsd("$0.80")}, {"USD"}},
        {"written as the title writes it",
         {"USD 0.12345", "USD 99", "USD -1234.5"},
         {lowUsd("$0.12"), lowUsd("-$1,234.50")},
         {"USD"}},
        {"the command line tells no one and records nothing",
         {"command line", "USD 0.80", "USD 5.00 CNY 3", "restart", "USD 0.70"},
         {lowUsd("$0.70")},
         {"USD"}},
        {"the command line leaves the app's record",
         {"USD 0.80", "command line", "USD 9", "restart", "USD 0.70"},
         {lowUsd("$0.80")},
         {"USD"}},
        {"off tells nothing and records no fall",
         {"off", "USD 0.80", "USD 0.70", "on", "USD 0.60", "USD 0.50"},
         {lowUsd("$0.60")},
         {"USD"}},
        {"off still forgets a recovered fall",
         {"USD 0.80", "off", "USD 3", "on", "USD 0.50"},
         {lowUsd("$0.80"), lowUsd("$0.50")},
         {"USD"}},
    };
    for (const NoticeCase& c : cases) {
        NoticeRun run;
        for (const std::string& step : c.steps) {
            run.step(step);
        }
        std::vector<std::string> told;
        for (const Notification& notification : run.fake.desktop.notifications()) {
            EXPECT_EQ(notification.summary, "DeepSeek balance is low") << c.name;
            told.push_back(notification.body);
        }
        EXPECT_EQ(told, c.told) << c.name;
        EXPECT_EQ(run.recorded(), c.recorded) << c.name;
    }
}

TEST(LowBalanceNoticeTest, TheNoticeFollowsTheWarningTitleAndTheSettingIsStoredOnByDefault) {
    NoticeRun run;
    EXPECT_TRUE(run.delegate->lowBalanceNotificationsEnabled());
    run.step("USD 0.80");
    EXPECT_EQ(run.fake.statusItem.titles().back(), kWarning + " $0.80");
    EXPECT_EQ(run.fake.desktop.log(), std::vector<std::string>{"notify"});

    // A stored value that is no boolean reads as the platform's defaults read it.
    const std::vector<std::pair<SettingValue, bool>> stored = {{false, false},
                                                               {true, true},
                                                               {std::string("no"), false},
                                                               {std::string("YES"), true},
                                                               {std::int64_t{0}, false},
                                                               {SettingBytes{"on"}, false}};
    for (const auto& [value, enabled] : stored) {
        run.fake.settings.setValue("lowBalanceNotifications", value);
        EXPECT_EQ(run.delegate->lowBalanceNotificationsEnabled(), enabled);
    }
    run.delegate->setLowBalanceNotificationsEnabled(true);
    EXPECT_EQ(run.fake.settings.value("lowBalanceNotifications"), SettingValue(true));

    // A record that is no boolean counts as no fall told.
    run.fake.settings.setValue("lowBalanceNotified.USD", std::string("garbage"));
    run.step("USD 0.70");
    EXPECT_EQ(run.fake.desktop.notifications().size(), 2u);
    EXPECT_EQ(run.fake.settings.value("lowBalanceNotified.USD"), SettingValue(true));
}

} // namespace
} // namespace quorvane
