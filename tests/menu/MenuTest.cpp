#include "fakes/DelegateTest.h"
#include "fakes/ExpectedMenu.h"
#include "menu/BalanceSummary.h"
#include "menu/KeyDialog.h"

namespace quorvane {
namespace {

// The core's text renderer: a card by its kind, lines as they are, "✓ " for a check mark.
const MenuNotation kText{"[card dashboard]", "", "\xE2\x9C\x93 ", "  ", [](std::string_view key) {
                             return "  (" + std::string(key) + ")";
                         }};
const std::string kCommands = expectedCommands(kText);

using MenuTest = DelegateTest;

TEST_F(MenuTest, TwoCurrenciesGiveTheWholeMenu) {
    refreshWith(200, balanceBody({{"CNY", "70.00"}, {"USD", "12.50"}}));
    fake.clock.advance(60);
    refreshWith(200, balanceBody({{"CNY", "69.5"}, {"USD", "0.75"}}));
    fake.clock.advance(120);
    delegate.refreshIntervalClicked(60); // a rebuild that changes nothing else

    EXPECT_EQ(fake.statusItem.menuText(), expectedTwoCurrencyMenu(kText));
}

TEST_F(MenuTest, TheTopSectionFollowsTheFourCases) {
    const std::string whale = "\xF0\x9F\x90\x8B";
    // C: no key at all.
    delegate.refreshClicked();
    EXPECT_EQ(fake.statusItem.menuText(), "[card status]\n  " + whale +
                                              " Quorvane\n  No API key yet\n"
                                              "  \xF0\x9F\x94\x90 Add your key to start tracking\n" +
                                              kCommands);

    // D: an empty stored key counts as present, yet it is no key to send.
    fake.storeKey("");
    delegate.refreshClicked();
    EXPECT_TRUE(fake.http.requests().empty());
    EXPECT_EQ(fake.statusItem.title(), whale + " Key?");
    EXPECT_EQ(fake.statusItem.menuText(), "[card status]\n  " + whale + " Quorvane\n  No data yet\n  " +
                                              whale + " Waiting for DeepSeek balance\n" + kCommands);

    // D while a request is in flight.
    fake.storeKey("sk-test");
    delegate.refreshClicked();
    EXPECT_EQ(fake.statusItem.menuText(), "[card status]\n  " + whale + " Quorvane\n  Refreshing...\n  " +
                                              whale + " Waiting for DeepSeek balance\n" + kCommands);

    // B: a failure, kept while the next refresh runs.
    fake.http.respond(401, "Authentication Fails");
    const std::string failure = "[card status]\n  " + whale +
                                " Quorvane\n  Could not refresh balance\n"
                                "  \xE2\x9A\xA0\xEF\xB8\x8F HTTP 401 Authentication Fails\n" +
                                kCommands;
    EXPECT_EQ(fake.statusItem.menuText(), failure);
    delegate.refreshClicked();
    EXPECT_EQ(fake.statusItem.menuText(), failure);

    // A with an empty entry list.
    fake.http.respond(200, balanceBody({}, false));
    EXPECT_EQ(fake.statusItem.menuText(),
              "[card dashboard]\n  " + whale +
                  " Quorvane\n  No balance\n  Today -\n  No balance\n"
                  "  [chart 0 points]\n  Updated 0 sec. ago \xE2\x80\xA2 1 min auto-refresh\n"
                  "---\nNo balance returned\nDetails >\n"
                  "  API status: no balance\n  Updated: 0 sec. ago\n" +
                  kCommands);
}

TEST_F(MenuTest, CommandsCarryTheirHandlersAndNothingAccumulatesOverRebuilds) {
    refreshWith(200, balanceBody({{"USD", "5"}}));
    const std::vector<MenuItem> first = fake.statusItem.menu();
    for (int i = 0; i < 20; ++i) {
        delegate.refreshIntervalClicked(60); // a rebuild that changes nothing else
    }
    const std::vector<MenuItem>& menu = fake.statusItem.menu();
    ASSERT_EQ(menu.size(), first.size());
    ASSERT_EQ(menu.size(), 12u);

    std::vector<std::string> selectors;
    auto collect = [&selectors](const std::vector<MenuItem>& items, auto& self) -> void {
        for (const MenuItem& item : items) {
            EXPECT_TRUE(item.enabled) << item.title;
            if (item.command != MenuCommand::None) {
                selectors.push_back(std::string(commandSelector(item.command)) + " " + item.keyEquivalent +
                                    (item.tag != 0 ? std::to_string(item.tag) : ""));
            }
            self(item.submenu, self);
        }
    };
    collect(menu, collect);
    EXPECT_EQ(selectors,
              (std::vector<std::string>{
                  "refreshClicked r", "copySummaryClicked c", "toggleAutoRefreshClicked ",
                  "refreshIntervalClicked: 30", "refreshIntervalClicked: 60", "refreshIntervalClicked: 300",
                  "refreshIntervalClicked: 900", "setAPIKeyClicked ,", "resetBaselineClicked ",
                  "clearHistoryClicked ", "removeAPIKeyClicked ", "openBillingClicked b", "quitClicked q"}));
}

using SummaryAndCommandsTest = DelegateTest;

TEST_F(SummaryAndCommandsTest, TheSummaryHasThreeFormsAndCopyingReplacesThePasteboard) {
    EXPECT_EQ(delegate.balanceSummary(), "Quorvane has no balance data yet.");

    refreshWith(200, balanceBody({{"USD", "12.50"}, {"CNY", "70"}}));
    fake.clock.advance(30);
    refreshWith(200, balanceBody({{"USD", "12.0037"}, {"CNY", "71"}}));
    const std::string yuan = "CN\xC2\xA5";
    EXPECT_EQ(delegate.balanceSummary(),
              "Quorvane\nUpdated: 2026-11-22 09:00:30 +0000\nUSD remaining: $12.0037\n"
              "USD today spent: $0.4963\nUSD since baseline: $0.4963\nCNY remaining: " +
                  yuan + "71.00\nCNY today spent: " + yuan + "0.00\nCNY since baseline: " + yuan + "0.00");

    refreshWith(200, balanceBody({}));
    EXPECT_EQ(delegate.balanceSummary(), "Quorvane\nUpdated: 2026-11-22 09:00:30 +0000");

    delegate.copySummaryClicked();
    refreshWith(500, "Internal Server Error");
    delegate.copySummaryClicked();
    EXPECT_EQ(fake.desktop.log(), (std::vector<std::string>{"clear pasteboard", "write pasteboard",
                                                            "clear pasteboard", "write pasteboard"}));
    EXPECT_EQ(fake.desktop.pasteboard(), "Quorvane error: HTTP 500 Internal Server Error");

    // In UTC whatever the zone, the second cut, not rounded.
    EXPECT_EQ(BalanceSummary::utcText(Timestamp::fromUnixSeconds(1795338000.999)),
              "2026-11-22 09:00:00 +0000");
    EXPECT_EQ(BalanceSummary::utcText(Timestamp::fromUnixSeconds(-1.0)), "1969-12-31 23:59:59 +0000");
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
    EXPECT_EQ(fake.http.requests().size(), 1u) << "clearing starts no refresh";
}

TEST_F(SummaryAndCommandsTest, ResetBaselineForgetsSpendAndRefreshesAtOnce) {
    refreshWith(200, balanceBody({{"USD", "10"}, {"CNY", "50"}}));
    refreshWith(200, balanceBody({{"USD", "8"}, {"CNY", "45"}}));
    EXPECT_EQ(delegate.spentToday(Decimal::fromInteger(8), "USD"), Decimal::fromInteger(2));

    delegate.perform(MenuCommand::ResetBaseline);
    ASSERT_EQ(fake.http.requests().size(), 3u);
    fake.http.respond(200, balanceBody({{"USD", "8"}, {"CNY", "45"}}));
    EXPECT_EQ(delegate.spentToday(Decimal::fromInteger(8), "USD"), Decimal());
    EXPECT_EQ(delegate.spentSinceBaseline(Decimal::fromInteger(8), "USD"), Decimal());
    EXPECT_EQ(delegate.spentToday(Decimal::fromInteger(45), "CNY"), Decimal());
    EXPECT_EQ(delegate.spentSinceBaseline(Decimal::fromInteger(45), "CNY"), Decimal());
}

TEST(KeyDialogTest, TrimsWhiteSpaceAndLineBreaksAtBothEndsOnly) {
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {" \t sk-abc \r\n", "sk-abc"},
        {"\n\nsk-a b c\n", "sk-a b c"},
        {"\xC2\xA0sk-abc\xE2\x80\xA8", "sk-abc"}, // no-break space, line separator
        {"\xE3\x80\x80sk-\xE3\x80\x80"
         "abc\xE2\x80\x83",
         "sk-\xE3\x80\x80"
         "abc"},
        // The information separators U+001C..U+001F, a byte each.
        {"\x1Fsk-abc\x1C", "sk-abc"},
        {"\x1Csk-abc\x1F", "sk-abc"},
        {"", std::nullopt},
        {"\xE2\x80\x83", std::nullopt},
    };
    for (const auto& [typed, saved] : cases) {
        EXPECT_EQ(KeyDialog::acceptedKey({kAlertFirstButtonReturn, typed}), saved) << typed;
        EXPECT_EQ(KeyDialog::acceptedKey({kAlertFirstButtonReturn + 1, typed}), std::nullopt) << typed;
    }
}

using KeyCommandsTest = DelegateTest;

TEST_F(KeyCommandsTest, SaveStoresTheTrimmedKeyResetsBaselinesThenRefreshesWhileCancelOrBlankChangeNothing) {
    fake.storeKey("sk-old");
    fake.settings.setValue("dayKey", std::string("2026-11-21"));
    fake.desktop.answerAlert(kAlertFirstButtonReturn + 1, "sk-typed-then-cancelled");
    fake.desktop.answerAlert(kAlertFirstButtonReturn, " \n ");
    delegate.setAPIKeyClicked();
    delegate.setAPIKeyClicked();
    EXPECT_EQ(fake.secrets.item("Quorvane", "DeepSeekAPIKey"), "sk-old");
    EXPECT_TRUE(fake.settings.value("dayKey"));
    EXPECT_TRUE(fake.http.requests().empty());
    EXPECT_TRUE(fake.statusItem.titles().empty());

    fake.desktop.answerAlert(kAlertFirstButtonReturn, "  sk-new \n");
    delegate.setAPIKeyClicked();
    ASSERT_EQ(fake.desktop.alerts().size(), 3u);
    const AlertRequest& shown = fake.desktop.alerts()[2];
    EXPECT_EQ(shown.messageText, "DeepSeek API Key");
    EXPECT_EQ(shown.informativeText, "Paste your DeepSeek API key. It will be stored in macOS Keychain.");
    EXPECT_EQ(shown.buttons, (std::vector<std::string>{"Save", "Cancel"}));
    EXPECT_EQ(shown.fieldSize, (Size{420, 24}));
    EXPECT_EQ(shown.placeholder, "sk-...");
    EXPECT_EQ(shown.initialText, "sk-old");
    EXPECT_EQ(fake.desktop.log().back(), "alert");
    EXPECT_EQ(fake.desktop.log().end()[-2], "activate");

    EXPECT_EQ(fake.secrets.item("Quorvane", "DeepSeekAPIKey"), "sk-new");
    EXPECT_FALSE(fake.settings.value("dayKey"));
    ASSERT_EQ(fake.http.requests().size(), 1u);
    EXPECT_EQ(fake.http.requests()[0].headers[1].second, "Bearer sk-new");
    EXPECT_EQ(fake.statusItem.title(), "\xF0\x9F\x90\x8B ...");
}

TEST_F(KeyCommandsTest, RemovalClearsTheResultTwiceInARow) {
    refreshWith(200, balanceBody({{"USD", "5"}}));
    const auto historyBefore = delegate.allHistory();

    for (int i = 0; i < 2; ++i) {
        delegate.removeAPIKeyClicked();
        EXPECT_EQ(fake.secrets.item("Quorvane", "DeepSeekAPIKey"), std::nullopt);
        EXPECT_EQ(delegate.lastResponse(), std::nullopt);
        EXPECT_EQ(delegate.lastError(), std::nullopt);
        EXPECT_EQ(delegate.lastUpdatedAt(), std::nullopt);
        EXPECT_EQ(fake.statusItem.title(), "\xF0\x9F\x90\x8B DS");
        EXPECT_EQ(fake.statusItem.menu().size(), 7u);
        EXPECT_NE(fake.statusItem.menuText().find("No API key yet"), std::string::npos);
    }
    EXPECT_EQ(delegate.allHistory(), historyBefore);
    EXPECT_TRUE(fake.settings.value("dayKey"));

    fake.desktop.answerAlert(kAlertFirstButtonReturn + 1, "");
    delegate.setAPIKeyClicked();
    EXPECT_EQ(fake.desktop.alerts().back().initialText, "") << "no stored key: an empty field";
}

} // namespace
} // namespace quorvane
