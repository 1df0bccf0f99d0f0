#include "gui/QtStatusItem.h"

#include "GuiFakePlatform.h"
#include "app/AppDelegate.h"

#include <QApplication>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

const std::string kWhale = "\xF0\x9F\x90\x8B";

class QtStatusItemTest : public ::testing::Test {
protected:
    GuiFakePlatform gui;
    AppDelegate delegate{gui.platform()};
    StatusStripWidget& strip = gui.statusItem.strip();

    static QRect available() { return QGuiApplication::primaryScreen()->availableGeometry(); }
};

TEST_F(QtStatusItemTest, LaunchShowsTheTitleInAStripAtTheTopRight) {
    EXPECT_FALSE(strip.isVisible()) << "nothing shows before the menu is attached";
    delegate.applicationDidFinishLaunching();

    EXPECT_TRUE(gui.statusItem.hasButton());
    EXPECT_TRUE(strip.isVisible());
    EXPECT_EQ(strip.title().toStdString(), kWhale + " Key?");
    EXPECT_EQ(strip.toolTip(), "Quorvane");
    EXPECT_TRUE(strip.windowFlags().testFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint));
    EXPECT_EQ(strip.geometry().right(), available().right());
    EXPECT_EQ(strip.geometry().top(), available().top());
}

TEST_F(QtStatusItemTest, AClickOnTheStripOpensTheMenuBelowIt) {
    delegate.applicationDidFinishLaunching();
    ASSERT_FALSE(gui.statusItem.menu().actions().isEmpty());

    QTest::mouseClick(&strip, Qt::LeftButton);
    QMenu& menu = gui.statusItem.menu();
    EXPECT_TRUE(menu.isVisible());
    EXPECT_TRUE(gui.timerHold.isHeld()) << "timer fires wait while the menu is open";
    EXPECT_EQ(menu.pos(), StatusStripWidget::popupPosition(strip.frameGeometry(), menu.size(), available()));
    EXPECT_EQ(menu.geometry().top(), strip.frameGeometry().bottom() + 1);
    EXPECT_LE(menu.geometry().right(), available().right());
    menu.close();
    EXPECT_FALSE(gui.timerHold.isHeld());
}

TEST(StatusStripPlacementTest, PopupsStayOnTheScreen) {
    const QRect screen(0, 0, 800, 600);
    EXPECT_EQ(StatusStripWidget::popupPosition({710, 0, 90, 24}, {330, 400}, screen), QPoint(470, 24));
    EXPECT_EQ(StatusStripWidget::popupPosition({710, 576, 90, 24}, {330, 400}, screen), QPoint(470, 176));
    EXPECT_EQ(StatusStripWidget::popupPosition({710, 0, 90, 24}, {900, 100}, screen), QPoint(0, 24));
    EXPECT_EQ(StatusStripWidget::popupPosition({710, 0, 90, 24}, {330, 700}, screen), QPoint(470, 0));
}

} // namespace
} // namespace quorvane
