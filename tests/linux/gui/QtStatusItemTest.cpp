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
const std::string kWarning = "\xE2\x9A\xA0\xEF\xB8\x8F";

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

TEST_F(QtStatusItemTest, TheStripGrowsAndShrinksWithItsTitle) {
    gui.statusItem.setTitle(kWhale + " DS");
    const int shortWidth = strip.width();
    gui.statusItem.setTitle(kWarning + " $1,234,567.89");
    const int longWidth = strip.width();
    EXPECT_GT(longWidth, shortWidth + 40);
    EXPECT_EQ(strip.geometry().right(), available().right()) << "still against the right edge";
    gui.statusItem.setTitle(kWhale + " DS");
    EXPECT_EQ(strip.width(), shortWidth);
}

TEST_F(QtStatusItemTest, AClickOnTheStripOpensTheMenuBelowIt) {
    delegate.applicationDidFinishLaunching();
    ASSERT_FALSE(gui.statusItem.menu().actions().isEmpty());

    QTest::mouseClick(&strip, Qt::LeftButton);
    QMenu& menu = gui.statusItem.menu();
    EXPECT_TRUE(menu.isVisible());
    EXPECT_EQ(menu.pos(), StatusStripWidget::popupPosition(strip.frameGeometry(), menu.size(), available()));
    EXPECT_EQ(menu.geometry().top(), strip.frameGeometry().bottom() + 1);
    EXPECT_LE(menu.geometry().right(), available().right());
    menu.close();
}

struct PlacementCase {
    const char* name;
    QRect strip;
    QSize popup;
    QPoint expected;
};

TEST(StatusStripPlacementTest, PopupsStayOnTheScreen) {
    const QRect screen(0, 0, 800, 600);
    const std::vector<PlacementCase> cases = {
        {"room below and to the right", {100, 0, 90, 24}, {330, 400}, {100, 24}},
        {"pulled left from the right edge", {710, 0, 90, 24}, {330, 400}, {470, 24}},
        {"above when there is no room below", {710, 576, 90, 24}, {330, 400}, {470, 176}},
        {"wider than the screen keeps the left edge", {710, 0, 90, 24}, {900, 100}, {0, 24}},
        {"taller than the screen keeps the top edge", {710, 0, 90, 24}, {330, 700}, {470, 0}},
    };
    for (const PlacementCase& c : cases) {
        EXPECT_EQ(StatusStripWidget::popupPosition(c.strip, c.popup, screen), c.expected) << c.name;
    }
}

TEST(QtStatusItemMarkTest, TheMarkIsTheTitlesFirstCharacterAsTheUserSeesIt) {
    EXPECT_EQ(QtStatusItem::mark(QString::fromStdString(kWhale + " $12.50")).toStdString(), kWhale);
    EXPECT_EQ(QtStatusItem::mark(QString::fromStdString(kWarning + " $0.50")).toStdString(), kWarning);
    EXPECT_EQ(QtStatusItem::mark(QString()), QString());
}

} // namespace
} // namespace quorvane
