#include "app/AppDelegate.h"
#include "fakes/BalanceBody.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quorvane {
namespace {

const std::string kWhale = "\xF0\x9F\x90\x8B";
const std::string kWarning = "\xE2\x9A\xA0\xEF\xB8\x8F";

class AppDelegateRefreshTest : public ::testing::Test {
protected:
    FakePlatform fake;
    std::unique_ptr<AppDelegate> delegate = std::make_unique<AppDelegate>(fake.platform());

    std::vector<std::string> titles() const { return fake.statusItem.titles(); }
};

TEST_F(AppDelegateRefreshTest, LaunchWithoutAKeyAsksForOneAndStillStartsTheTimer) {
    delegate->applicationDidFinishLaunching();

    EXPECT_EQ(fake.desktop.log(), std::vector<std::string>{"accessory policy"});
    EXPECT_EQ(titles(), (std::vector<std::string>{kWhale + " DS", kWhale + " Key?"}));
    EXPECT_EQ(fake.statusItem.toolTips(), std::vector<std::string>{"Quorvane"});
    EXPECT_EQ(fake.statusItem.events(), (std::vector<std::string>{"attach menu", "menu", "menu"}));
    EXPECT_TRUE(fake.http.requests().empty());
    EXPECT_EQ(fake.timers.activeCount(), 1u);
    EXPECT_EQ(fake.timers.activePeriod(), 60.0);
}

TEST_F(AppDelegateRefreshTest, LaunchWithAutoRefreshOffRefreshesOnceAndMakesNoTimer) {
    fake.storeKey("sk-test");
    fake.settings.setValue("autoRefreshEnabled", false);
    delegate->applicationDidFinishLaunching();

    EXPECT_EQ(fake.http.requests().size(), 1u);
    EXPECT_EQ(fake.timers.createdCount(), 0u);
    EXPECT_FALSE(delegate->hasRefreshTimer());
    EXPECT_EQ(titles(), (std::vector<std::string>{kWhale + " DS", kWhale + " ..."}));
}

TEST_F(AppDelegateRefreshTest, ASuccessfulRefreshSendsTheKeyAndRecordsEverythingInOrder) {
    fake.storeKey("  sk-blank ends  ");
    delegate->applicationDidFinishLaunching();

    ASSERT_EQ(fake.http.requests().size(), 1u);
    const HttpRequest& request = fake.http.requests()[0];
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.url, "https://api.deepseek.com/user/balance");
    EXPECT_EQ(request.timeout, std::chrono::seconds(20));
    EXPECT_EQ(request.maxBodyBytes, 4u * 1024u * 1024u);
    EXPECT_EQ(request.headers,
              (std::vector<std::pair<std::string, std::string>>{
                  {"Accept", "application/json"}, {"Authorization", "Bearer   sk-blank ends  "}}));
    EXPECT_TRUE(delegate->isRefreshing());

    fake.clock.advance(2);
    fake.http.respond(200, balanceBody({{"CNY", "70.00"}, {"USD", "12.50"}}));

    EXPECT_FALSE(delegate->isRefreshing());
    EXPECT_EQ(fake.statusItem.title(), kWhale + " $12.50");
    EXPECT_EQ(delegate->lastError(), std::nullopt);
    EXPECT_EQ(delegate->lastUpdatedAt(), fake.clock.now());
    ASSERT_TRUE(delegate->lastResponse());
    EXPECT_EQ(delegate->lastResponse()->balanceInfos.size(), 2u);
    // Baselines first, then the history, in response order.
    EXPECT_EQ(fake.settings.log(),
              (std::vector<std::string>{"set dayKey", "set dayStart.CNY", "set dayStart.USD",
                                        "set firstStart.CNY", "set firstStart.USD", "set balanceHistory"}));
    EXPECT_EQ(delegate->allHistory().size(), 2u);
    EXPECT_EQ(fake.statusItem.menuChanges(), 3) << "launch, start and end of the refresh";
}

TEST_F(AppDelegateRefreshTest, ARefreshInFlightDropsFurtherCallsAndTimerFires) {
    fake.storeKey("sk-test");
    delegate->applicationDidFinishLaunching();
    const auto titleCount = titles().size();
    const int menuChanges = fake.statusItem.menuChanges();

    delegate->refreshClicked();
    delegate->refreshClicked();
    fake.timers.fireActive();

    EXPECT_EQ(fake.http.requests().size(), 1u);
    EXPECT_EQ(titles().size(), titleCount);
    EXPECT_EQ(fake.statusItem.menuChanges(), menuChanges);

    fake.http.respond(200, balanceBody({{"USD", "5"}}));
    fake.timers.fireActive();
    EXPECT_EQ(fake.http.requests().size(), 2u) << "an idle timer fire refreshes";
}

TEST_F(AppDelegateRefreshTest, AKeyChangedDuringARequestDoesNotAffectIt) {
    fake.storeKey("sk-old");
    delegate->refreshClicked();
    fake.desktop.answerAlert(kAlertFirstButtonReturn, "sk-new");
    delegate->setAPIKeyClicked();
    EXPECT_EQ(fake.http.requests().size(), 1u) << "the save's refresh is dropped";

    fake.http.respond(200, balanceBody({{"USD", "5"}}));
    delegate->refreshClicked();
    ASSERT_EQ(fake.http.requests().size(), 2u);
    EXPECT_EQ(fake.http.requests()[0].headers[1].second, "Bearer sk-old");
    EXPECT_EQ(fake.http.requests()[1].headers[1].second, "Bearer sk-new");
}

TEST_F(AppDelegateRefreshTest, RemovingTheKeyDuringARequestStillRecordsItsOutcome) {
    fake.storeKey("sk-test");
    delegate->refreshClicked();
    delegate->removeAPIKeyClicked();
    EXPECT_EQ(fake.statusItem.title(), kWhale + " DS");

    fake.http.respond(500, "down");
    EXPECT_EQ(delegate->lastError(), "HTTP 500 down");
    EXPECT_EQ(fake.statusItem.title(), kWhale + " !");

    delegate->refreshClicked();
    EXPECT_EQ(fake.statusItem.title(), kWhale + " Key?");
    EXPECT_EQ(delegate->lastError(), std::nullopt);
    EXPECT_EQ(fake.http.requests().size(), 1u);
}

TEST_F(AppDelegateRefreshTest, AnEmptyKeyIsNoKeyButABlankKeyIsSent) {
    fake.storeKey("");
    delegate->refreshClicked();
    EXPECT_TRUE(fake.http.requests().empty());
    EXPECT_EQ(fake.statusItem.title(), kWhale + " Key?");

    fake.storeKey("   ");
    delegate->refreshClicked();
    ASSERT_EQ(fake.http.requests().size(), 1u);
    EXPECT_EQ(fake.http.requests()[0].headers[1].second, "Bearer    ");
}

TEST_F(AppDelegateRefreshTest, FailuresGiveOneLineErrorsAndKeepTheLastSuccessTime) {
    const std::string body200(200, 'x');
    const std::string thumbs =
        "\xF0\x9F\x91\x8D\xF0\x9F\x8F\xBD"; // 👍🏽, one character of two code points
    struct Case {
        const char* name;
        HttpResult answer;
        std::string error;
    };
    const Case cases[] = {
        {"401 with a long body", HttpResponse{true, 401, "Unauthorized " + body200},
         "HTTP 401 Unauthorized " + std::string(67, 'x')},
        {"excerpt counts characters", HttpResponse{true, 429, std::string(79, 'a') + thumbs + "tail"},
         "HTTP 429 " + std::string(79, 'a') + thumbs},
        {"non-UTF-8 body", HttpResponse{true, 502, "bad \xff\xfe gateway"}, "HTTP 502 "},
        // U+FEFF at the start is a character of the body like any other, on every platform.
        {"byte-order mark", HttpResponse{true, 500, "\xEF\xBB\xBF" + std::string(80, 'b')},
         "HTTP 500 \xEF\xBB\xBF" + std::string(79, 'b')},
        {"300 is an error", HttpResponse{true, 300, "{}"}, "HTTP 300 {}"},
        // Bodies the client cut at its size limit.
        {"cut failing body", HttpResponse{true, 503, std::string(90, 'c'), true},
         "HTTP 503 " + std::string(80, 'c')},
        {"cut inside a character", HttpResponse{true, 502, "\xC3\xA9\xC3", true}, "HTTP 502 \xC3\xA9"},
        {"cut successful body", HttpResponse{true, 200, R"({"is_available":tr)", true},
         "The response was too large."},
        {"the key in the platform's text", HttpTransportError{"Bearer sk-test refused for sk-test."},
         "[key] refused for [key]."},
        {"not HTTP", HttpResponse{false, 0, "garbage"}, "Invalid response"},
        {"transport", HttpTransportError{"The request timed out."}, "The request timed out."},
    };
    fake.storeKey("sk-test");
    delegate->refreshClicked();
    fake.http.respond(200, balanceBody({{"USD", "5"}}));
    const Timestamp success = fake.clock.now();

    for (const Case& c : cases) {
        fake.clock.advance(60);
        delegate->refreshClicked();
        fake.http.respond(c.answer);
        EXPECT_EQ(delegate->lastError(), c.error) << c.name;
        EXPECT_EQ(delegate->lastResponse(), std::nullopt) << c.name;
        EXPECT_EQ(delegate->lastUpdatedAt(), success) << c.name;
        EXPECT_EQ(fake.statusItem.title(), kWhale + " !") << c.name;
        EXPECT_FALSE(delegate->isRefreshing()) << c.name;
    }
    EXPECT_EQ(delegate->allHistory().size(), 1u) << "failures record no history";
}

TEST_F(AppDelegateRefreshTest, TwoHundredsAreDecodedAndAnEmptyBodyFailsAsJson) {
    fake.storeKey("sk-test");
    delegate->refreshClicked();
    fake.http.respond(299, balanceBody({{"USD", "3"}}));
    EXPECT_EQ(fake.statusItem.title(), kWhale + " $3.00");

    delegate->refreshClicked();
    fake.http.respond(204, "");
    ASSERT_TRUE(delegate->lastError());
    EXPECT_FALSE(delegate->lastError()->empty());
    EXPECT_EQ(delegate->lastError()->find('\n'), std::string::npos);
    EXPECT_EQ(delegate->lastResponse(), std::nullopt);
}

TEST_F(AppDelegateRefreshTest, TheTitleMarksLowBalancesAndShowsTwoFractionDigits) {
    struct Case {
        std::string body;
        std::string title;
    };
    const Case cases[] = {
        {balanceBody({{"USD", "1.00"}}), kWarning + " $1.00"},
        {balanceBody({{"USD", "1.01"}}), kWhale + " $1.01"},
        {balanceBody({{"CNY", "10"}}), kWarning + " CN\xC2\xA5"
                                                  "10.00"},
        {balanceBody({{"CNY", "10.01"}}), kWhale + " CN\xC2\xA5"
                                                   "10.01"},
        {balanceBody({{"CNY", "5"}}), kWarning + " CN\xC2\xA5"
                                                 "5.00"},
        {balanceBody({{"USD", "12.345"}}), kWhale + " $12.34"}, // half-even
        {balanceBody({{"CNY", "50"}, {"USD", "0.5"}}), kWarning + " $0.50"},
        {balanceBody({{"USD", "not a number"}}), kWarning + " $0.00"},
        {balanceBody({}), kWhale + " 0"},
        {balanceBody({{"", "12.5"}}), kWhale + " 12.5"}, // no formatter for an empty code
    };
    fake.storeKey("sk-test");
    for (const Case& c : cases) {
        delegate->refreshClicked();
        fake.http.respond(200, c.body);
        EXPECT_EQ(fake.statusItem.title(), c.title) << c.body;
    }
}

TEST_F(AppDelegateRefreshTest, WithoutAButtonTitlesAreSkippedAndLaunchGoesOn) {
    FakePlatform buttonless;
    RecordingStatusItem item(false);
    Platform platform = buttonless.platform();
    Platform withoutButton{item,           platform.settings,   platform.secrets,       platform.http,
                           platform.clock, platform.formatter,  platform.textSegmenter, platform.timers,
                           platform.alert, platform.pasteboard, platform.workspace,     platform.application};
    buttonless.storeKey("sk-test");
    AppDelegate app(withoutButton);
    app.applicationDidFinishLaunching();
    buttonless.http.respond(200, balanceBody({{"USD", "5"}}));

    EXPECT_TRUE(item.titles().empty());
    EXPECT_TRUE(item.toolTips().empty());
    EXPECT_EQ(item.events().front(), "attach menu");
    EXPECT_TRUE(app.lastResponse());
}

TEST_F(AppDelegateRefreshTest, AnAnswerArrivingAfterTheDelegateIsGoneIsIgnored) {
    fake.storeKey("sk-test");
    delegate->applicationDidFinishLaunching();
    delegate.reset();
    fake.http.respond(200, balanceBody({{"USD", "5"}}));
    EXPECT_EQ(fake.statusItem.title(), kWhale + " ...");
}

} // namespace
} // namespace quorvane
