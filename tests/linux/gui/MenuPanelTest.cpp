#include "gui/MenuPanel.h"

#include "GuiFakePlatform.h"
#include "QMenuText.h"
#include "app/AppDelegate.h"
#include "gui/CardWidget.h"
#include "gui/MenuPanelRow.h"
#include "linux/EventLoopWait.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

class MenuPanelTest : public ::testing::Test {
protected:
    GuiFakePlatform gui;
    AppDelegate delegate{gui.platform()};
    MenuPanel panel{MenuPanel::Role::Popover, [this](MenuCommand command, std::int64_t tag) {
                        delegate.perform(command, tag);
                    }};

    MenuPanelTest() {
        gui.reachTwoCurrencyDashboard(delegate);
        panel.setMenu(delegate.menu());
    }

    MenuPanelRow* row(const std::string& title) {
        for (MenuPanelRow* candidate : panel.rows()) {
            if (candidate->item().title == title) {
                return candidate;
            }
        }
        ADD_FAILURE() << "no row " << title;
        return nullptr;
    }
};

TEST_F(MenuPanelTest, TheCardAndEveryItemOfTheMenuAreThereInOrder) {
    EXPECT_EQ(panel.findChildren<CardWidget*>().size(), 1);
    std::string rows;
    for (const MenuPanelRow* candidate : panel.rows()) {
        const MenuItem& item = candidate->item();
        rows += item.kind == MenuItem::Kind::Separator ? std::string("---") : item.title;
        rows += candidate->isActionable() ? " *" : "";
        rows +=
            candidate->shortcutText().isEmpty() ? "" : "  [" + candidate->shortcutText().toStdString() + "]";
        rows += "\n";
    }
    EXPECT_EQ(rows, "---\n"
                    "Today: $11.75\n"
                    "Baseline: $11.75\n"
                    "\xE2\x8F\xB1 Auto-refresh: every 1 min\n"
                    "Details *\n"
                    "---\n"
                    "\xF0\x9F\x94\x84 Refresh Now *  [Ctrl+R]\n"
                    "\xF0\x9F\x93\x8B Copy Summary *  [Ctrl+C]\n"
                    "Settings *\n"
                    "---\n"
                    "\xE2\x8C\x98 Quit *  [Ctrl+Q]\n");
    EXPECT_EQ(row("Today: $11.75")->focusPolicy(), Qt::NoFocus) << "lines to read take no focus";

    const auto widgets = QApplication::allWidgets().size();
    for (int i = 0; i < 20; ++i) {
        panel.setMenu(delegate.menu());
    }
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
}

TEST_F(MenuPanelTest, ACommandClosesThePopoverThenRuns) {
    panel.show();
    const std::size_t requests = gui.fake.http.requests().size();
    QTest::mouseClick(row("\xF0\x9F\x94\x84 Refresh Now"), Qt::LeftButton);
    EXPECT_FALSE(panel.isVisible());
    EXPECT_EQ(gui.fake.http.requests().size(), requests) << "after the click has been handled";
    QCoreApplication::processEvents();
    EXPECT_EQ(gui.fake.http.requests().size(), requests + 1);
    gui.fake.http.respond(200, balanceBody({{"USD", "0.75"}}));

    panel.setMenu(delegate.menu());
    panel.show();
    QTest::keyClick(&panel, Qt::Key_C, Qt::ControlModifier);
    QCoreApplication::processEvents();
    EXPECT_FALSE(panel.isVisible());
    EXPECT_EQ(gui.fake.desktop.pasteboard().substr(0, 18), "Quorvane\nUpdated: ");
}

TEST_F(MenuPanelTest, ASubmenuOpensAsARealMenuBesideItsRow) {
    panel.show();
    MenuPanelRow* settings = row("Settings");
    QTest::mouseClick(settings, Qt::LeftButton);
    ASSERT_NE(panel.openSubmenu(), nullptr);
    QMenu& submenu = *panel.openSubmenu();
    EXPECT_TRUE(submenu.isVisible());
    EXPECT_EQ(submenu.actions().size(), 9);
    EXPECT_EQ(submenu.actions().at(1)->text().toStdString(), "Refresh Interval: 1 min");

    QAction* fiveMinutes = submenu.actions().at(1)->menu()->actions().at(2);
    ASSERT_EQ(fiveMinutes->text(), "5 min");
    fiveMinutes->trigger();
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(gui.fake.timers.activePeriod(), 300.0);
    EXPECT_FALSE(panel.isVisible());
}

TEST_F(MenuPanelTest, ThePopoverClosesWhenAnotherWindowTakesTheFocus) {
    panel.show();
    panel.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return panel.isActiveWindow(); }));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return !panel.isVisible(); }));
}

TEST(MenuPanelWindowTest, TheWindowShowsTheTitleAndHowToGetTheBalanceIntoTheTopBar) {
    GuiFakePlatform gui;
    MenuPanel window(MenuPanel::Role::Window, {});
    window.setTitle(QString::fromUtf8("\xF0\x9F\x90\x8B $12.50"));
    QStringList texts;
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        texts.append(label->text());
    }
    EXPECT_EQ(texts, (QStringList{QString::fromUtf8("\xF0\x9F\x90\x8B $12.50"),
                                  MenuPanel::hintFor(qEnvironmentVariable("XDG_CURRENT_DESKTOP"))}));
    EXPECT_TRUE(window.windowFlags().testFlags(Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                                               Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint)) << "its size is fixed";
    QSignalSpy closed(&window, &MenuPanel::closed);
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible()) << "only closing the window quits";
    window.close();
    EXPECT_EQ(closed.size(), 1);
}

TEST(MenuPanelWindowTest, TheHintSaysWhatFitsTheDesktopThatRuns) {
    const std::pair<const char*, const char*> cases[] = {
        {"GNOME",
         "For the balance in the top bar, install gnome-shell-extension-appindicator and turn it on in "
         "Extensions."},
        {"ubuntu:GNOME",
         "For the balance in the top bar, install gnome-shell-extension-appindicator and turn it "
         "on in Extensions."},
        {"KDE", "For the balance in the panel, add the System Tray widget to it."},
        {"XFCE", "For the balance in the panel, add the Status Tray plugin to it."},
        {"sway",
         "For the balance in a panel, give it a system tray, or run 'quorvane status --json' from a bar "
         "such as waybar."},
        {"",
         "For the balance in a panel, give it a system tray, or run 'quorvane status --json' from a bar such "
         "as waybar."},
    };
    for (const auto& [desktops, hint] : cases) {
        EXPECT_EQ(MenuPanel::hintFor(desktops).toStdString(), hint) << desktops;
    }
}

TEST(MenuPanelWindowTest, TheDashboardIsAWindowWithATitleBarThatNeitherMaximisesNorMinimises) {
    MenuPanel popover(MenuPanel::Role::Popover, {});
    EXPECT_EQ(popover.windowTitle(), "Quorvane");
    EXPECT_TRUE(popover.windowFlags().testFlags(Qt::WindowTitleHint | Qt::WindowCloseButtonHint));
    EXPECT_FALSE(popover.windowFlags() &
                 (Qt::FramelessWindowHint | Qt::WindowMaximizeButtonHint | Qt::WindowMinimizeButtonHint));
}

} // namespace
} // namespace quorvane
