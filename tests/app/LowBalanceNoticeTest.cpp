#include "app/AppDelegate.h"
#include "fakes/BalanceBody.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

namespace quorvane {
namespace {

// One run of the app, step by step. A step is an answer ("USD 0.80", or
// "USD 5.00 CNY 5" for two currencies, the shown one being USD), "fail" (an
// HTTP 500), "no key", "restart" (a new app over the same stores), "command
// line" (a command over them, which tells no one), or "off" and "on" for the
// user's setting.
struct NoticeRun {
    void step(const std::string& step) {
        if (step == "restart" || step == "command line") {
            Platform platform = fake.platform();
            platform.notifier = step == "restart" ? platform.notifier : nullptr;
            delegate = std::make_unique<AppDelegate>(platform);
        } else if (step == "off" || step == "on") {
            delegate->setLowBalanceNotificationsEnabled(step == "on");
        } else if (step == "no key") {
            fake.secrets.remove("Quorvane", "DeepSeekAPIKey");
            delegate->refreshClicked();
        } else {
            std::vector<std::pair<std::string, std::string>> totals;
            std::istringstream words(step);
            for (std::string currency, total; words >> currency >> total;) {
                totals.emplace_back(currency, total);
            }
            fake.storeKey("sk-test");
            delegate->refreshClicked();
            fake.http.respond(step == "fail" ? 500 : 200, balanceBody(totals));
        }
    }

    // The bodies of the notifications shown, in order.
    std::vector<std::string> told() const {
        std::vector<std::string> bodies;
        for (const Notification& notification : fake.desktop.notifications()) {
            EXPECT_EQ(notification.summary, "DeepSeek balance is low");
            bodies.push_back(notification.body);
        }
        return bodies;
    }

    // The currencies whose fall is on record.
    std::vector<std::string> recorded() const {
        std::vector<std::string> currencies;
        for (const std::string currency : {"CNY", "USD"}) {
            if (fake.settings.value("lowBalanceNotified." + currency)) {
                currencies.push_back(currency);
            }
        }
        return currencies;
    }

    FakePlatform fake;
    std::unique_ptr<AppDelegate> delegate = std::make_unique<AppDelegate>(fake.platform());
};

const std::string kYuan = "CN\xC2\xA5";

std::string low(const std::string& amount, const std::string& level = "$1.00") {
    return amount + " left, at or below the warning level of " + level + ".";
}

TEST(LowBalanceNoticeTest, AFallOfTheShownBalanceIsToldOnceUntilItRecovers) {
    const struct {
        std::string name;
        std::vector<std::string> steps;
        std::vector<std::string> told;
        std::vector<std::string> recorded;
    } cases[] = {
        {"told as the title writes it; a failure, no key and no number change nothing",
         {"USD 5.00", "USD 0.80", "fail", "no key", "USD abc", "USD 0.50", "USD 1.01", "USD 1.00", "USD 9",
          "USD 0.12345", "USD 99", "USD -1234.5"},
         {low("$0.80"), low("$1.00"), low("$0.12"), low("-$1,234.50")},
         {"USD"}},
        {"each currency has its own record",
         {"USD 0.80", "CNY 5", "USD 0.70", "CNY 9.99", "CNY 10.01", "CNY 4"},
         {low("$0.80"), low(kYuan + "5.00", kYuan + "10.00"), low(kYuan + "4.00", kYuan + "10.00")},
         {"CNY", "USD"}},
        {"only the balance the title shows", {"USD 5.00 CNY 5", "CNY 5 USD 0.8"}, {low("$0.80")}, {"USD"}},
        {"a restart keeps the record, and a command leaves it",
         {"USD 0.80", "restart", "USD 0.70", "command line", "USD 9", "restart", "USD 0.60"},
         {low("$0.80")},
         {"USD"}},
        {"a command tells no one and records nothing",
         {"command line", "USD 0.80", "USD 5.00 CNY 3", "restart", "USD 0.70"},
         {low("$0.70")},
         {"USD"}},
        {"off tells and records nothing, yet forgets a recovered fall",
         {"USD 0.80", "off", "USD 3", "USD 0.70", "on", "USD 0.60", "USD 0.50"},
         {low("$0.80"), low("$0.60")},
         {"USD"}},
    };
    for (const auto& c : cases) {
        NoticeRun run;
        for (const std::string& step : c.steps) {
            run.step(step);
        }
        EXPECT_EQ(run.told(), c.told) << c.name;
        EXPECT_EQ(run.recorded(), c.recorded) << c.name;
    }
}

TEST(LowBalanceNoticeTest, TheSettingIsOnByDefaultAndARecordThatIsNoBooleanCountsAsNone) {
    NoticeRun run;
    EXPECT_TRUE(run.delegate->lowBalanceNotificationsEnabled());
    run.fake.settings.setValue("lowBalanceNotifications", std::string("no"));
    EXPECT_FALSE(run.delegate->lowBalanceNotificationsEnabled());
    run.delegate->setLowBalanceNotificationsEnabled(true);
    EXPECT_EQ(run.fake.settings.value("lowBalanceNotifications"), SettingValue(true));

    run.fake.settings.setValue("lowBalanceNotified.USD", std::string("garbage"));
    run.step("USD 0.70");
    EXPECT_EQ(run.told(), std::vector<std::string>{low("$0.70")});
    EXPECT_EQ(run.fake.settings.value("lowBalanceNotified.USD"), SettingValue(true));
    EXPECT_EQ(run.fake.desktop.log(), std::vector<std::string>{"notify"});
}

} // namespace
} // namespace quorvane
