#include "gui/MenuRenderer.h"

#include "GuiFakePlatform.h"
#include "QMenuText.h"
#include "app/AppDelegate.h"
#include "fakes/BalanceBody.h"
#include "fakes/ExpectedMenu.h"

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

// The QMenu: a card by its size, "(disabled) " before an inert line, Qt's check marks and shortcuts.
const MenuNotation kQMenu{"[card 330x190]", "(disabled) ", "[x] ", "[ ] ", [](std::string_view key) {
                              const std::string upper =
                                  key == "," ? "," : std::string(1, static_cast<char>(key[0] - 'a' + 'A'));
                              return "  [Ctrl+" + upper + "]";
                          }};

TEST_F(MenuRendererTest, TheDashboardMenuShowsEveryItemOfTheModelAndRebuildsLeaveNothingBehind) {
    reachTwoCurrencyDashboard();
    const std::string expected = expectedTwoCurrencyMenu(kQMenu);
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
    MenuItem disabled = MenuItem::commandItem("Later", MenuCommand::Refresh);
    disabled.enabled = false;
    QMenu menu;
    MenuRenderer([](MenuCommand, std::int64_t) {})
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
