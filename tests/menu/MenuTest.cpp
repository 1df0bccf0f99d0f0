#include "fakes/DelegateTest.h"
#include "fakes/ExpectedMenu.h"

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

    // D: an empty stored key counts as present.
    fake.storeKey("");
    delegate.refreshClicked();
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

TEST_F(MenuTest, AutoRefreshOffReadsOffInTheSummaryAndOffInSettings) {
    delegate.toggleAutoRefreshClicked();
    refreshWith(200, balanceBody({{"USD", "5"}}));
    const std::string text = fake.statusItem.menuText();
    EXPECT_NE(text.find("\n\xE2\x8F\xB8 Auto-refresh: off\n"), std::string::npos);
    EXPECT_NE(text.find("\n  \xE2\x8F\xB8 Auto-refresh: Off\n"), std::string::npos);
    EXPECT_EQ(text.find("Auto-refresh: every"), std::string::npos);
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
                selectors.push_back(std::string(commandSelector(item.command)) + " " + item.keyEquivalent);
            }
            self(item.submenu, self);
        }
    };
    collect(menu, collect);
    EXPECT_EQ(selectors,
              (std::vector<std::string>{
                  "refreshClicked r", "copySummaryClicked c", "toggleAutoRefreshClicked ",
                  "refreshIntervalClicked: ", "refreshIntervalClicked: ", "refreshIntervalClicked: ",
                  "refreshIntervalClicked: ", "setAPIKeyClicked ,", "resetBaselineClicked ",
                  "clearHistoryClicked ", "removeAPIKeyClicked ", "openBillingClicked b", "quitClicked q"}));
}

TEST_F(MenuTest, AmountsThatDoNotParseShowAsZeroAndLow) {
    refreshWith(200, balanceBody({{"USD", "n/a"}}));
    const std::string text = fake.statusItem.menuText();
    EXPECT_NE(text.find("  Remaining: $0.00\n"), std::string::npos);
    EXPECT_NE(text.find("  \xE2\x9A\xA0\xEF\xB8\x8F Low balance warning\n"), std::string::npos);
}

} // namespace
} // namespace quorvane
