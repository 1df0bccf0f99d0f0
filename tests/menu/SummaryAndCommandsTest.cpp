#include "fakes/DelegateTest.h"
#include "menu/BalanceSummary.h"

namespace quorvane {
namespace {

using SummaryAndCommandsTest = DelegateTest;

TEST_F(SummaryAndCommandsTest, SummaryHasThreeForms) {
    EXPECT_EQ(delegate.balanceSummary(), "Quorvane has no balance data yet.");

    refreshWith(200, balanceBody({{"USD", "12.50"}, {"CNY", "70"}}));
    fake.clock.advance(30);
    refreshWith(200, balanceBody({{"USD", "12.0037"}, {"CNY", "71"}}));
    EXPECT_EQ(delegate.balanceSummary(), "Quorvane\n"
                                         "Updated: 2026-11-22 09:00:30 +0000\n"
                                         "USD remaining: $12.0037\n"
                                         "USD today spent: $0.4963\n"
                                         "USD since baseline: $0.4963\n"
                                         "CNY remaining: CN\xC2\xA5"
                                         "71.00\n"
                                         "CNY today spent: CN\xC2\xA5"
                                         "0.00\n"
                                         "CNY since baseline: CN\xC2\xA5"
                                         "0.00");

    refreshWith(200, balanceBody({}));
    EXPECT_EQ(delegate.balanceSummary(), "Quorvane\nUpdated: 2026-11-22 09:00:30 +0000");

    refreshWith(500, "Internal Server Error");
    EXPECT_EQ(delegate.balanceSummary(), "Quorvane error: HTTP 500 Internal Server Error");
}

TEST_F(SummaryAndCommandsTest, UtcTextIgnoresLocaleAndZone) {
    struct Case {
        double unixSeconds;
        const char* text;
    };
    const Case cases[] = {
        {0.0, "1970-01-01 00:00:00 +0000"},
        {1795338000.999, "2026-11-22 09:00:00 +0000"},
        {-1.0, "1969-12-31 23:59:59 +0000"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(BalanceSummary::utcText(Timestamp::fromUnixSeconds(c.unixSeconds)), c.text);
    }
}

TEST_F(SummaryAndCommandsTest, CopyClearsThePasteboardEachTime) {
    delegate.copySummaryClicked();
    refreshWith(401, "no");
    delegate.copySummaryClicked();
    EXPECT_EQ(fake.desktop.log(), (std::vector<std::string>{"clear pasteboard", "write pasteboard",
                                                            "clear pasteboard", "write pasteboard"}));
    EXPECT_EQ(fake.desktop.pasteboard(), "Quorvane error: HTTP 401 no");
}

TEST_F(SummaryAndCommandsTest, BillingQuitAndHistoryCommands) {
    refreshWith(200, balanceBody({{"USD", "5"}}));
    const int changes = fake.statusItem.menuChanges();

    delegate.perform(MenuCommand::OpenBilling);
    delegate.perform(MenuCommand::Quit);
    EXPECT_EQ(fake.desktop.log(),
              (std::vector<std::string>{"open https://platform.deepseek.com/usage", "terminate"}));
    EXPECT_EQ(fake.statusItem.menuChanges(), changes) << "neither rebuilds the menu";

    delegate.perform(MenuCommand::ClearHistory);
    EXPECT_TRUE(delegate.allHistory().empty());
    EXPECT_TRUE(fake.settings.value("firstStart.USD"));
    EXPECT_EQ(fake.statusItem.menuChanges(), changes + 1);
    EXPECT_TRUE(fake.http.requests().size() == 1u) << "clearing starts no refresh";
}

TEST_F(SummaryAndCommandsTest, ResetBaselineForgetsSpendAndRefreshesAtOnce) {
    refreshWith(200, balanceBody({{"USD", "10"}, {"CNY", "50"}}));
    refreshWith(200, balanceBody({{"USD", "8"}, {"CNY", "45"}}));
    EXPECT_EQ(delegate.spentToday(Decimal::fromInteger(8), "USD"), Decimal::fromInteger(2));

    delegate.perform(MenuCommand::ResetBaseline);
    ASSERT_EQ(fake.http.requests().size(), 3u);
    fake.http.respond(200, balanceBody({{"USD", "8"}, {"CNY", "45"}}));
    for (const char* currency : {"USD", "CNY"}) {
        const Decimal current = Decimal::fromInteger(std::string(currency) == "USD" ? 8 : 45);
        EXPECT_EQ(delegate.spentToday(current, currency), Decimal()) << currency;
        EXPECT_EQ(delegate.spentSinceBaseline(current, currency), Decimal()) << currency;
    }
}

} // namespace
} // namespace quorvane
