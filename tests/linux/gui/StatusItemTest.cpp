// The status item's faces: the strip on a bare screen, the window on GNOME's Wayland, the panel's item on a
// session bus.
#include "FakeStatusNotifierWatcher.h"
#include "SampleMenu.h"
#include "gui/MarkIcon.h"
#include "gui/MenuPanel.h"
#include "gui/QtStatusItem.h"
#include "linux/EventLoopWait.h"
#include "services/QtTimerHold.h"

#include <QApplication>
#include <QDBusMessage>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

using Presentation = QtStatusItem::Presentation;
using Host = FakeStatusNotifierWatcher::Host;

constexpr std::chrono::milliseconds kFallbackWait(QtStatusItem::kFallbackDelayMs + 2000);
const QString kWhale = QString::fromUtf8("\xF0\x9F\x90\x8B");
const QString kWarning = QString::fromUtf8("\xE2\x9A\xA0\xEF\xB8\x8F");

// The item with its commands written down, launched as the app launches it.
// Without a bus no panel can host it: the strip, as on a bare X11 screen.
class QtStatusItemTest : public ::testing::Test {
protected:
    explicit QtStatusItemTest(QDBusConnection bus = QDBusConnection("none"), bool wayland = false)
        : item(std::move(bus), wayland, &timerHold) {
        item.setCommandHandler(recorder(commands));
    }

    void launch() {
        item.setTitle(StatusTitle::of(StatusTitle::State::NoKey, StatusTitle::kAppMark));
        item.setToolTip("Quorvane");
        item.attachMenu();
        item.menuDidChange(sampleMenu());
    }
    bool shows(Presentation presentation, std::chrono::milliseconds limit = std::chrono::seconds(15)) {
        return waitUntil([&] { return item.presentation() == presentation; }, limit);
    }

    Commands commands;
    // Held by the item while its menu or dashboard is open.
    QtTimerHold timerHold;
    QtStatusItem item;
    StatusStripWidget& strip = item.strip();
    StatusNotifierItem& tray = item.trayItem();
};

TEST_F(QtStatusItemTest, WithoutAPanelTheTitleIsAStripAtTheTopRightWhoseClickOpensTheMenuBelowIt) {
    EXPECT_FALSE(strip.isVisible()) << "nothing shows before the menu is attached";
    launch();
    EXPECT_EQ(item.presentation(), Presentation::Strip);
    ASSERT_TRUE(strip.isVisible());
    EXPECT_EQ(strip.title(), kWhale + " Key?");
    EXPECT_EQ(strip.toolTip(), "Quorvane");
    EXPECT_TRUE(strip.windowFlags().testFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint));
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_EQ(strip.geometry().topRight(), available.topRight());

    QTest::mouseClick(&strip, Qt::LeftButton);
    QMenu& menu = item.menu();
    EXPECT_EQ(menu.actions().size(), 5);
    EXPECT_TRUE(timerHold.isHeld()) << "timer fires wait while the menu is open";
    menu.close();
    EXPECT_FALSE(timerHold.isHeld());
}

// The panel draws the mark as the icon and the rest as the label; while a
// refresh runs it keeps the longer label's room, so the items beside it stay put.
TEST_F(QtStatusItemTest, TheTitleIsReadyForAPanelAndARefreshKeepsTheLabelsRoom) {
    launch();
    EXPECT_EQ(tray.label(), " Key?");
    EXPECT_EQ(tray.toolTip().title, "Quorvane");
    EXPECT_EQ(tray.toolTip().text, kWhale + " Key?");
    item.setTitle(StatusTitle::of(StatusTitle::State::Refreshing, StatusTitle::kLowMark));
    EXPECT_EQ(tray.mark(), kWarning);
    EXPECT_EQ(std::make_pair(tray.label(), tray.labelGuide()),
              std::make_pair(QString(" ..."), QString(" Key?")));
    ASSERT_EQ(tray.iconPixmap().size(), 6);
    EXPECT_EQ(tray.iconPixmap().last().toImage(),
              MarkIcon::render(kWarning, 64).convertToFormat(QImage::Format_ARGB32));
}

TEST(StatusStripPlacementTest, PopupsStayOnTheScreen) {
    const QRect screen(0, 0, 800, 600);
    EXPECT_EQ(StatusStripWidget::popupPosition({710, 0, 90, 24}, {330, 400}, screen), QPoint(470, 24));
    EXPECT_EQ(StatusStripWidget::popupPosition({710, 0, 90, 24}, {900, 100}, screen), QPoint(0, 24));
    EXPECT_EQ(StatusStripWidget::popupPosition({710, 0, 90, 24}, {330, 700}, screen), QPoint(470, 0));
}

TEST(StatusNotifierItemTest, OnlyWhatChangedIsAnnounced) {
    // Each title, then the totals so far of NewIcon, XAyatanaNewLabel and NewToolTip.
    const std::tuple<QString, QString, QString, std::array<qsizetype, 3>> steps[] = {
        {kWhale, " $1.50", " $1.50", {1, 1, 1}},    {kWhale, " $1.50", " $1.50", {1, 1, 1}},
        {kWhale, " ...", " $1.50", {1, 2, 2}},      {kWarning, " $0.50", " $0.50", {2, 3, 3}},
        {kWarning, " $0.50", " $12.50", {2, 4, 4}}, {kWhale, " $0.50", " $12.50", {3, 4, 5}},
    };
    StatusNotifierItem tray;
    QSignalSpy icons(&tray, &StatusNotifierItem::NewIcon);
    QSignalSpy labels(&tray, &StatusNotifierItem::XAyatanaNewLabel);
    QSignalSpy toolTips(&tray, &StatusNotifierItem::NewToolTip);
    for (const auto& [mark, label, guide, totals] : steps) {
        tray.setTitle(mark, label, guide, [](const QString&) { return SniIconPixmapList{}; });
        EXPECT_EQ((std::array{icons.size(), labels.size(), toolTips.size()}), totals)
            << label.toStdString() << " / " << guide.toStdString();
    }
}

// These run on a session bus of their own (dbus-run-session), where the test
// plays the panel: a watcher on a connection of its own that comes and goes.
class SessionBusStatusItemTest : public QtStatusItemTest {
protected:
    explicit SessionBusStatusItemTest(bool wayland = false)
        : QtStatusItemTest(QDBusConnection::sessionBus(), wayland) {}
    ~SessionBusStatusItemTest() override { watcher.stop(); }

    static QDBusConnection panelConnection() {
        return QDBusConnection::connectToBus(QDBusConnection::SessionBus, "panel");
    }
    bool registered() {
        return waitUntil([&] { return watcher.registeredItems() == QStringList{service}; });
    }

    FakeStatusNotifierWatcher watcher{panelConnection()};
    // The item registers by its path; the watcher knows it by the connection's name and the path.
    const QString busName = QDBusConnection::sessionBus().baseService();
    const QString service = busName + "/StatusNotifierItem";
};

class SessionBusWaylandStatusItemTest : public SessionBusStatusItemTest {
protected:
    SessionBusWaylandStatusItemTest()
        : SessionBusStatusItemTest(true) {}
};

TEST_F(SessionBusStatusItemTest, WithAPanelTheItemShowsAndItsMenuReachesHostsBuiltOnLibdbusmenu) {
    ASSERT_TRUE(watcher.start());
    launch();
    EXPECT_EQ(item.presentation(), Presentation::TrayItem);
    EXPECT_FALSE(strip.isVisible());
    ASSERT_TRUE(registered());
    ASSERT_TRUE(waitUntil([&] { return watcher.itemsRead() == 1; }));
    // New texts in the same tree go out as changed properties.
    item.menuDidChange(sampleMenu("$0.50", true));

    // The card's line, then Refresh Now.
    QDBusMessage click =
        QDBusMessage::createMethodCall(busName, "/MenuBar", "com.canonical.dbusmenu", "EventGroup");
    click << QVariant::fromValue(DBusMenuEventList{DBusMenuEvent{1, "clicked", QDBusVariant(QString()), 0},
                                                   DBusMenuEvent{5, "clicked", QDBusVariant(QString()), 0}});
    QDBusPendingCall clicked = panelConnection().asyncCall(click);
    ASSERT_TRUE(waitUntil([&] { return clicked.isFinished() && !commands.empty(); }));
    EXPECT_FALSE(clicked.isError()) << clicked.error().message().toStdString();
    EXPECT_EQ(commands, (Commands{{MenuCommand::Refresh, 0}}));
    EXPECT_TRUE(item.menu().isVisible()) << "on X11 the dashboard is the menu with its card";
    item.menu().hide();
}

TEST_F(SessionBusStatusItemTest, TheItemFollowsThePanelAndItsHostAsTheyComeGoAndRestart) {
    // Plasma's host owns a name of its own; its watcher, in kded, never says the host left.
    QDBusConnection host = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "host");
    const QString hostName = "org.kde.StatusNotifierHost-4242";
    ASSERT_TRUE(host.registerService(hostName));
    launch();
    ASSERT_TRUE(watcher.start());
    ASSERT_TRUE(shows(Presentation::TrayItem));
    EXPECT_FALSE(strip.isVisible());
    ASSERT_TRUE(host.unregisterService(hostName));
    ASSERT_TRUE(shows(Presentation::Strip, kFallbackWait));
    ASSERT_TRUE(host.registerService(hostName));
    watcher.setHostRegistered(true); // the new host reads the items it is told of
    ASSERT_TRUE(shows(Presentation::TrayItem));
    QDBusConnection::disconnectFromBus("host");

    // A panel that goes away gets a moment to come back before the strip
    // returns. It says first that its host left: asked then, the watcher is
    // gone, and that is no host.
    watcher.setHostRegistered(false);
    watcher.stop();
    QTest::qWait(500);
    EXPECT_EQ(item.presentation(), Presentation::TrayItem);
    ASSERT_TRUE(shows(Presentation::Strip, kFallbackWait));

    // A restarted watcher knows nothing of the item until it registers again.
    ASSERT_TRUE(watcher.start());
    ASSERT_TRUE(registered());
    EXPECT_EQ(watcher.registrations(), 2);
    ASSERT_TRUE(shows(Presentation::TrayItem));
}

// GNOME on Wayland: a small window until a panel shows the item. This
// watcher does not say whether a host is there, and is taken at its word
// that it watches for one.
TEST_F(SessionBusWaylandStatusItemTest,
       TheWindowStaysUntilAHostShowsTheItemWhoseClickTogglesAFloatingDashboard) {
    launch();
    ASSERT_EQ(item.presentation(), Presentation::Window);
    MenuPanel& window = *item.window();
    EXPECT_FALSE(timerHold.isHeld()) << "the app's own window is no open menu";

    // The watcher takes the item, then drops it unread, as GNOME's extension
    // does with an item it fails to read; the item registers again.
    watcher.dropNextItems(1);
    ASSERT_TRUE(watcher.start(Host::Unsaid));
    ASSERT_TRUE(waitUntil([&] { return watcher.registrations() == 1; }));
    EXPECT_TRUE(window.isVisible()) << "registered is not shown";
    ASSERT_TRUE(shows(Presentation::TrayItem));
    EXPECT_EQ(watcher.itemsRead(), 1);
    EXPECT_FALSE(window.isVisible()) << "never two status items";
    // Dropped again while shown: the item comes back before the window would.
    watcher.drop(service);
    ASSERT_TRUE(waitUntil([&] { return watcher.itemsRead() == 2; }));
    EXPECT_EQ(item.presentation(), Presentation::TrayItem);

    tray.Activate(0, 0);
    ASSERT_NE(item.popover(), nullptr);
    MenuPanel& popover = *item.popover();
    EXPECT_TRUE(popover.isVisible());
    EXPECT_TRUE(timerHold.isHeld()) << "timer fires wait while the dashboard is open";
    tray.Activate(0, 0);
    EXPECT_TRUE(popover.isVisible()) << "the second click of a double click";
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    tray.Activate(0, 0);
    tray.Activate(0, 0);
    EXPECT_FALSE(popover.isVisible());
    EXPECT_FALSE(timerHold.isHeld());

    // Without the panel the window comes back, and closing it quits.
    watcher.stop();
    ASSERT_TRUE(shows(Presentation::Window, kFallbackWait));
    window.close();
    QCoreApplication::processEvents();
    EXPECT_EQ(commands.back(), std::make_pair(MenuCommand::Quit, std::int64_t{0}));
}

} // namespace
} // namespace quorvane
