#include "gui/MenuRenderer.h"

#include "GuiFakePlatform.h"
#include "QMenuText.h"
#include "app/AppDelegate.h"
#include "fakes/BalanceBody.h"

#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QWidgetAction>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

QAction* findAction(const QMenu& menu, const QString& text) {
    for (QAction* action : menu.actions()) {
        if (action->text() == text) {
            return action;
        }
        if (const QMenu* submenu = action->menu()) {
            if (QAction* found = findAction(*submenu, text)) {
                return found;
            }
        }
    }
    return nullptr;
}

class MenuRendererTest : public ::testing::Test {
protected:
    GuiFakePlatform gui;
    AppDelegate delegate{gui.platform()};

    MenuRendererTest() { gui.route(delegate); }

    void reachTwoCurrencyDashboard() { gui.reachTwoCurrencyDashboard(delegate); }

    QMenu& menu() { return gui.statusItem.menu(); }
};

const std::string kCommands = "---\n"
                              "\xF0\x9F\x94\x84 Refresh Now  [Ctrl+R]\n"
                              "\xF0\x9F\x93\x8B Copy Summary  [Ctrl+C]\n"
                              "Settings >\n"
                              "  \xE2\x8F\xB1 Auto-refresh: On\n"
                              "  Refresh Interval: 1 min >\n"
                              "    [ ] 30 sec\n"
                              "    [x] 1 min\n"
                              "    [ ] 5 min\n"
                              "    [ ] 15 min\n"
                              "  ---\n"
                              "  Set API Key...  [Ctrl+,]\n"
                              "  Reset Spend Baseline\n"
                              "  Clear Usage History\n"
                              "  Remove API Key\n"
                              "  ---\n"
                              "  Open DeepSeek Billing  [Ctrl+B]\n"
                              "---\n"
                              "\xE2\x8C\x98 Quit  [Ctrl+Q]\n";

TEST_F(MenuRendererTest, TheDashboardMenuShowsEveryItemOfTheModelAndRebuildsLeaveNothingBehind) {
    reachTwoCurrencyDashboard();
    const std::string expected = "[card 330x190]\n"
                                 "  \xF0\x9F\x90\x8B Quorvane\n"
                                 "  $0.75\n"
                                 "  Today $11.75\n"
                                 "  Ready\n"
                                 "  [chart 2 points]\n"
                                 "  Updated 2 min. ago \xE2\x80\xA2 1 min auto-refresh\n"
                                 "---\n"
                                 "(disabled) Today: $11.75\n"
                                 "(disabled) Baseline: $11.75\n"
                                 "(disabled) \xE2\x8F\xB1 Auto-refresh: every 1 min\n"
                                 "Details >\n"
                                 "  (disabled) Remaining: CN\xC2\xA5"
                                 "69.50\n"
                                 "  (disabled) Granted: CN\xC2\xA5"
                                 "0.00\n"
                                 "  (disabled) Topped up: CN\xC2\xA5"
                                 "69.50\n"
                                 "  (disabled) Today spent: CN\xC2\xA5"
                                 "0.50\n"
                                 "  (disabled) Since baseline: CN\xC2\xA5"
                                 "0.50\n"
                                 "  (disabled) \xF0\x9F\x9F\xA2 Balance looks healthy\n"
                                 "  ---\n"
                                 "  (disabled) Remaining: $0.75\n"
                                 "  (disabled) Granted: $0.00\n"
                                 "  (disabled) Topped up: $0.75\n"
                                 "  (disabled) Today spent: $11.75\n"
                                 "  (disabled) Since baseline: $11.75\n"
                                 "  (disabled) \xE2\x9A\xA0\xEF\xB8\x8F Low balance warning\n"
                                 "  ---\n"
                                 "  (disabled) API status: ready\n"
                                 "  (disabled) Updated: 2 min. ago\n" +
                                 kCommands;
    EXPECT_EQ(QMenuText::render(menu()), expected);
    const auto objects = menu().findChildren<QObject*>().size();
    const auto widgets = QApplication::allWidgets().size();

    for (int i = 0; i < 50; ++i) {
        delegate.refreshIntervalClicked(60); // a rebuild that changes nothing else
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(menu().findChildren<QObject*>().size(), objects);
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
    EXPECT_EQ(QMenuText::render(menu()), expected);
}

TEST_F(MenuRendererTest, ACommandReachesTheDelegateOnceTheMenuIsDoneWithTheClick) {
    reachTwoCurrencyDashboard();
    findAction(menu(), "5 min")->trigger();
    EXPECT_EQ(gui.fake.timers.activePeriod(), 60.0) << "not before the event loop runs";
    QCoreApplication::processEvents();
    EXPECT_EQ(gui.fake.timers.activePeriod(), 300.0);
    EXPECT_TRUE(findAction(menu(), "5 min")->isChecked());
}

TEST(MenuRendererItemsTest, TitlesAreShownAsWrittenAndDisabledItemsStayDisabled) {
    FakeClock clock;
    IcuFormatter formatter{"en_US"};
    MenuItem disabled = MenuItem::commandItem("Later", MenuCommand::Refresh);
    disabled.enabled = false;
    QMenu menu;
    MenuRenderer(formatter, clock, [](MenuCommand, std::int64_t) {})
        .render({MenuItem::informational("Fish & Chips: 2 && more"), MenuItem::separator(), disabled,
                 MenuItem::submenuItem("R&D", {MenuItem::choice("30 sec", 30, false)})},
                menu);
    EXPECT_EQ(QMenuText::render(menu), "(disabled) Fish && Chips: 2 &&&& more\n"
                                       "---\n"
                                       "(disabled) Later\n"
                                       "R&&D >\n"
                                       "  [ ] 30 sec\n");
}

} // namespace
} // namespace quorvane
