#include "FakeStatusNotifierWatcher.h"
#include "GuiFakePlatform.h"
#include "app/AppDelegate.h"
#include "gui/MarkIcon.h"
#include "gui/QtStatusItem.h"
#include "linux/EventLoopWait.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QGuiApplication>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <array>

// These run on a session bus of their own (dbus-run-session), where the test
// plays the panel: a watcher on a connection of its own that comes and goes.
namespace quorvane {
namespace {

using Presentation = QtStatusItem::Presentation;

constexpr std::chrono::milliseconds kFallbackWait(QtStatusItem::kFallbackDelayMs + 2000);

const QString kWhale = QString::fromUtf8("\xF0\x9F\x90\x8B");
const QString kWarning = QString::fromUtf8("\xE2\x9A\xA0\xEF\xB8\x8F");

class SessionBusStatusNotifierTest : public ::testing::Test {
protected:
    explicit SessionBusStatusNotifierTest(bool wayland = false)
        : gui(QDBusConnection::sessionBus(), wayland) {
        gui.route(delegate);
    }
    ~SessionBusStatusNotifierTest() override { watcher.stop(); }

    static QDBusConnection panelConnection() {
        return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel"));
    }

    FakeStatusNotifierWatcher watcher{panelConnection()};
    GuiFakePlatform gui;
    AppDelegate delegate{gui.platform()};
    QtStatusItem& item = gui.statusItem;
    StatusNotifierItem& tray = gui.statusItem.trayItem();
    // The item registers by its path; the watcher knows it by the connection's name and the path.
    const QString busName = QDBusConnection::sessionBus().baseService();
    const QString service = busName + "/StatusNotifierItem";
};

class SessionBusWaylandStatusNotifierTest : public SessionBusStatusNotifierTest {
protected:
    SessionBusWaylandStatusNotifierTest()
        : SessionBusStatusNotifierTest(true) {}
};

TEST(StatusPresentationTest, OneFaceForEachDesktop) {
    EXPECT_EQ(QtStatusItem::presentationFor(true, false), Presentation::TrayItem);
    EXPECT_EQ(QtStatusItem::presentationFor(true, true), Presentation::TrayItem);
    EXPECT_EQ(QtStatusItem::presentationFor(false, false), Presentation::Strip);
    EXPECT_EQ(QtStatusItem::presentationFor(false, true), Presentation::Window);
}

TEST(MarkIconTest, TheMarkFillsTheIconFromEdgeToEdge) {
    for (const QString& mark : {kWhale, kWarning}) {
        for (const int size : MarkIcon::kSizes) {
            const QImage icon = MarkIcon::render(mark, size);
            int left = size;
            int right = -1;
            for (int y = 0; y < size; ++y) {
                for (int x = 0; x < size; ++x) {
                    if (qAlpha(icon.pixel(x, y)) > 0) {
                        left = std::min(left, x);
                        right = std::max(right, x);
                    }
                }
            }
            EXPECT_EQ(left, 0) << size;
            EXPECT_EQ(right, size - 1) << size;
        }
    }
}

// Panels redraw on each signal, and the title is set on every refresh: a
// part set again unchanged must not be announced.
TEST(StatusNotifierItemTest, OnlyWhatChangedIsAnnounced) {
    struct Step {
        QString mark;
        QString label;
        QString guide;
        // Totals of icons drawn, NewIcon, XAyatanaNewLabel and NewToolTip so far.
        std::array<qsizetype, 4> totals;
    };
    const QString& whale = kWhale;
    const QString& warning = kWarning;
    const Step steps[] = {
        {whale, " $1.50", " $1.50", {1, 1, 1, 1}},   {whale, " $1.50", " $1.50", {1, 1, 1, 1}},
        {whale, " ...", " $1.50", {1, 1, 2, 2}},     {whale, " ...", " $1.50", {1, 1, 2, 2}},
        {warning, " $0.50", " $0.50", {2, 2, 3, 3}}, {warning, " $0.50", " $12.50", {2, 2, 4, 4}},
        {whale, " $0.50", " $12.50", {3, 3, 4, 5}},
    };
    StatusNotifierItem tray;
    qsizetype drawn = 0;
    const auto draw = [&drawn](const QString&) {
        ++drawn;
        return SniIconPixmapList{};
    };
    QSignalSpy icons(&tray, &StatusNotifierItem::NewIcon);
    QSignalSpy labels(&tray, &StatusNotifierItem::XAyatanaNewLabel);
    QSignalSpy toolTips(&tray, &StatusNotifierItem::NewToolTip);
    for (const Step& step : steps) {
        tray.setTitle(step.mark, step.label, step.guide, draw);
        EXPECT_EQ((std::array<qsizetype, 4>{drawn, icons.size(), labels.size(), toolTips.size()}),
                  step.totals)
            << step.label.toStdString() << " / " << step.guide.toStdString();
    }
}

TEST_F(SessionBusStatusNotifierTest, WithAPanelTheItemCarriesTheTitleAndNoStripAppears) {
    ASSERT_TRUE(watcher.start());
    gui.fake.storeKey("sk-test");
    delegate.applicationDidFinishLaunching();

    EXPECT_EQ(item.presentation(), Presentation::TrayItem);
    EXPECT_FALSE(item.strip().isVisible());
    ASSERT_TRUE(waitUntil([&] { return watcher.registeredItems() == QStringList{service}; }));
    EXPECT_EQ(tray.label(), " ...");
    EXPECT_EQ(tray.toolTip().title, "Quorvane");
    EXPECT_EQ(tray.toolTip().text, kWhale + " ...");

    gui.fake.http.respond(200, balanceBody({{"USD", "12.50"}}));
    EXPECT_EQ(tray.mark(), kWhale);
    EXPECT_EQ(tray.label(), " $12.50");
    EXPECT_EQ(tray.labelGuide(), " $12.50");
    EXPECT_EQ(tray.toolTip().text, kWhale + " $12.50");
    ASSERT_EQ(tray.iconPixmap().size(), 6);
    EXPECT_EQ(tray.iconPixmap().first().width, 16);
    EXPECT_EQ(tray.iconPixmap().last().toImage(),
              MarkIcon::render(kWhale, 64).convertToFormat(QImage::Format_ARGB32));

    // While a refresh runs the panel keeps the balance's room for the label.
    QSignalSpy newIcon(&tray, &StatusNotifierItem::NewIcon);
    QSignalSpy newLabel(&tray, &StatusNotifierItem::XAyatanaNewLabel);
    delegate.refreshClicked();
    EXPECT_EQ(tray.label(), " ...");
    EXPECT_EQ(tray.labelGuide(), " $12.50");
    EXPECT_EQ(newIcon.size(), 0);

    gui.fake.http.respond(200, balanceBody({{"USD", "0.75"}}));
    EXPECT_EQ(tray.mark(), kWarning);
    EXPECT_EQ(tray.label(), " $0.75");
    EXPECT_EQ(tray.toolTip().text, kWarning + " $0.75");
    EXPECT_EQ(newIcon.size(), 1);
    EXPECT_EQ(newLabel.size(), 2);
    EXPECT_NE(tray.iconPixmap().last().toImage(),
              MarkIcon::render(kWhale, 64).convertToFormat(QImage::Format_ARGB32));
}

TEST_F(SessionBusStatusNotifierTest, TheItemFollowsThePanelAsItComesGoesAndRestarts) {
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(item.presentation(), Presentation::Strip);
    ASSERT_TRUE(item.strip().isVisible());
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_TRUE(available.contains(item.strip().frameGeometry())) << "never over a panel";

    ASSERT_TRUE(watcher.start());
    ASSERT_TRUE(waitUntil([&] { return item.presentation() == Presentation::TrayItem; }));
    EXPECT_FALSE(item.strip().isVisible());
    ASSERT_TRUE(waitUntil([&] { return watcher.registeredItems() == QStringList{service}; }));

    // A panel that goes away gets a moment to come back before the strip
    // returns. It says first that its host left: asked then, the watcher is
    // gone, and that is no host.
    watcher.setHostRegistered(false);
    watcher.stop();
    QTest::qWait(500);
    EXPECT_EQ(item.presentation(), Presentation::TrayItem);
    EXPECT_FALSE(item.strip().isVisible());
    ASSERT_TRUE(waitUntil([&] { return item.presentation() == Presentation::Strip; }, kFallbackWait));
    EXPECT_TRUE(item.strip().isVisible());

    // A restarted watcher knows nothing of the item until it registers again.
    ASSERT_TRUE(watcher.start());
    ASSERT_TRUE(waitUntil([&] { return watcher.registeredItems() == QStringList{service}; }));
    EXPECT_EQ(watcher.registrations(), 2);
    ASSERT_TRUE(waitUntil([&] { return item.presentation() == Presentation::TrayItem; }));
    EXPECT_FALSE(item.strip().isVisible());
}

TEST_F(SessionBusWaylandStatusNotifierTest, WithoutAHostTheAppIsOneSmallWindowThatQuitsWhenClosed) {
    // A watcher that no panel reads shows nothing: GNOME with the extension switched off.
    ASSERT_TRUE(watcher.start(false));
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(waitUntil([&] { return item.presentation() == Presentation::Window; }));
    ASSERT_NE(item.window(), nullptr);
    MenuPanel& window = *item.window();
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(item.strip().isVisible());
    EXPECT_EQ(window.windowTitle(), "Quorvane");
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::FramelessWindowHint));

    watcher.setHostRegistered(true);
    ASSERT_TRUE(waitUntil([&] { return item.presentation() == Presentation::TrayItem; }));
    EXPECT_FALSE(window.isVisible()) << "never two status items";

    watcher.setHostRegistered(false);
    ASSERT_TRUE(waitUntil([&] { return item.presentation() == Presentation::Window; }, kFallbackWait));
    ASSERT_TRUE(window.isVisible());
    EXPECT_FALSE(gui.timerHold.isHeld()) << "the app's own window is no open menu";
    window.close();
    QCoreApplication::processEvents();
    EXPECT_EQ(gui.fake.desktop.log().back(), "terminate");
}

TEST_F(SessionBusWaylandStatusNotifierTest,
       TheWindowStaysUntilAHostShowsTheItemAndADroppedItemRegistersAgain) {
    delegate.applicationDidFinishLaunching();
    ASSERT_EQ(item.presentation(), Presentation::Window);
    MenuPanel& window = *item.window();

    // The watcher takes the item, then drops it unread, as GNOME's extension
    // does with an item it fails to read; the item registers again.
    watcher.dropNextItems(1);
    ASSERT_TRUE(watcher.start());
    ASSERT_TRUE(waitUntil([&] { return watcher.registrations() == 1; }));
    EXPECT_TRUE(window.isVisible()) << "registered is not shown";
    ASSERT_TRUE(waitUntil([&] { return watcher.registrations() == 2; }));
    ASSERT_TRUE(waitUntil([&] { return item.presentation() == Presentation::TrayItem; }));
    EXPECT_EQ(watcher.itemsRead(), 1);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(watcher.registeredItems(), QStringList{service});

    // Dropped again while shown: the item comes back before the window would.
    watcher.drop(service);
    ASSERT_TRUE(waitUntil([&] { return watcher.itemsRead() == 2; }));
    EXPECT_EQ(watcher.registrations(), 3);
    EXPECT_EQ(item.presentation(), Presentation::TrayItem);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(SessionBusStatusNotifierTest, AHostThatLeavesIsGoneEvenWhereTheWatcherStillSaysAHostIsThere) {
    // Plasma's host owns a name of its own; its watcher, in kded, never says the host left.
    QDBusConnection host = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("host"));
    const QString hostName = QStringLiteral("org.kde.StatusNotifierHost-4242");
    ASSERT_TRUE(host.registerService(hostName));
    ASSERT_TRUE(watcher.start());
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(waitUntil([&] { return watcher.itemsRead() == 1; }));
    ASSERT_EQ(item.presentation(), Presentation::TrayItem);

    ASSERT_TRUE(host.unregisterService(hostName));
    ASSERT_TRUE(waitUntil([&] { return item.presentation() == Presentation::Strip; }, kFallbackWait));
    EXPECT_TRUE(watcher.isHostRegistered()) << "the watcher said nothing";

    ASSERT_TRUE(host.registerService(hostName));
    watcher.setHostRegistered(true); // the new host reads the items it is told of
    ASSERT_TRUE(waitUntil([&] { return item.presentation() == Presentation::TrayItem; }));
    EXPECT_FALSE(item.strip().isVisible());
    QDBusConnection::disconnectFromBus(QStringLiteral("host"));
}

TEST_F(SessionBusStatusNotifierTest, AHostBuiltOnLibdbusmenuReachesTheMenuWithEventGroup) {
    ASSERT_TRUE(watcher.start());
    gui.reachTwoCurrencyDashboard(delegate);
    QDBusConnection panel = panelConnection();
    QDBusMessage introspect = QDBusMessage::createMethodCall(
        busName, "/MenuBar", "org.freedesktop.DBus.Introspectable", "Introspect");
    QDBusPendingCall introspection = panel.asyncCall(introspect);
    ASSERT_TRUE(waitUntil([&] { return introspection.isFinished(); }));
    const QString xml = introspection.reply().arguments().value(0).toString();
    EXPECT_TRUE(xml.contains(R"(<method name="EventGroup">)")) << xml.toStdString();
    EXPECT_TRUE(xml.contains(R"(<signal name="ItemsPropertiesUpdated">)")) << xml.toStdString();

    int refresh = -1;
    DBusMenuLayoutItem root;
    item.trayMenu().GetLayout(0, -1, {"label"}, root);
    for (const DBusMenuLayoutItem& child : root.children) {
        if (child.properties.value("label") == QString::fromUtf8("\xF0\x9F\x94\x84 Refresh Now")) {
            refresh = child.id;
        }
    }
    ASSERT_GT(refresh, 0);
    QDBusMessage click =
        QDBusMessage::createMethodCall(busName, "/MenuBar", "com.canonical.dbusmenu", "EventGroup");
    click << QVariant::fromValue(
        DBusMenuEventList{DBusMenuEvent{refresh, "clicked", QDBusVariant(QString()), 0}});
    QDBusPendingCall clicked = panel.asyncCall(click);
    ASSERT_TRUE(waitUntil([&] { return clicked.isFinished(); }));
    ASSERT_FALSE(clicked.isError()) << clicked.error().message().toStdString();
    ASSERT_TRUE(waitUntil([&] { return gui.fake.http.requests().size() == 3; }));
}

TEST_F(SessionBusWaylandStatusNotifierTest, ThePrimaryClickTogglesAFloatingDashboard) {
    ASSERT_TRUE(watcher.start());
    gui.reachTwoCurrencyDashboard(delegate);
    ASSERT_EQ(item.popover(), nullptr) << "made when first shown";

    tray.Activate(0, 0);
    ASSERT_NE(item.popover(), nullptr);
    MenuPanel& popover = *item.popover();
    EXPECT_TRUE(popover.isVisible());
    EXPECT_EQ(popover.role(), MenuPanel::Role::Popover);
    // A fixed size is what tiling compositors float.
    EXPECT_EQ(popover.minimumSize(), popover.maximumSize());
    EXPECT_TRUE(gui.timerHold.isHeld()) << "timer fires wait while the dashboard is open";
    tray.Activate(0, 0);
    EXPECT_TRUE(popover.isVisible()) << "the second click of a double click";
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    tray.Activate(0, 0);
    tray.Activate(0, 0);
    EXPECT_FALSE(popover.isVisible());
    EXPECT_FALSE(gui.timerHold.isHeld());

    QTest::qWait(QApplication::doubleClickInterval() + 50);
    tray.Activate(0, 0);
    ASSERT_TRUE(popover.isVisible());
    QTest::keyClick(&popover, Qt::Key_Escape);
    EXPECT_FALSE(popover.isVisible());
}

} // namespace
} // namespace quorvane
