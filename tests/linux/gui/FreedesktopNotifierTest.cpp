#include "tray/FreedesktopNotifier.h"

#include "FakeNotificationServer.h"
#include "linux/EventLoopWait.h"

#include <QDBusConnection>
#include <QImage>
#include <gtest/gtest.h>

#include <sstream>

namespace quorvane {
namespace {

const Notification kLow{"DeepSeek balance is low", "$0.80 left, at or below the warning level of $1.00."};

// The app on the session bus, the server on a connection of its own, as a
// desktop's shell is another process.
class SessionBusNotifierTest : public ::testing::Test {
protected:
    explicit SessionBusNotifierTest(QStringList capabilities = {QStringLiteral("actions"),
                                                                QStringLiteral("body")})
        : server(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("shell")),
                 std::move(capabilities)) {}
    ~SessionBusNotifierTest() override { server.stop(); }

    bool shownCount(qsizetype count) {
        return waitUntil([&] { return server.shown().size() == count; });
    }

    QImage icon = QImage(64, 64, QImage::Format_ARGB32_Premultiplied);
    std::ostringstream log;
    QStringList opened;
    FreedesktopNotifier notifier{QDBusConnection::sessionBus(), icon,
                                 [this](const QString& token) { opened << token; }, log};
    FakeNotificationServer server;
};

TEST_F(SessionBusNotifierTest, ANoticeCarriesTheAppItsTextAndIconAndReplacesTheOneStillShown) {
    ASSERT_TRUE(server.start());
    notifier.notify(kLow);
    ASSERT_TRUE(shownCount(1));
    const FakeNotificationServer::Shown first = server.shown().at(0);
    EXPECT_EQ(first.appName, "Quorvane");
    EXPECT_EQ(first.replacesId, 0u);
    EXPECT_EQ(first.appIcon, "app.quorvane.Quorvane");
    EXPECT_EQ(first.summary, "DeepSeek balance is low");
    EXPECT_EQ(first.body, "$0.80 left, at or below the warning level of $1.00.");
    EXPECT_EQ(first.actions, (QStringList{"default", "Open Quorvane"}));
    EXPECT_EQ(first.desktopEntry, "app.quorvane.Quorvane");
    EXPECT_EQ(first.urgency, 1);
    EXPECT_EQ(first.image, "64x64");
    EXPECT_EQ(first.expireTimeout, -1);

    notifier.notify(kLow);
    ASSERT_TRUE(shownCount(2));
    EXPECT_EQ(server.shown().at(1).replacesId, first.id);
    server.close(first.id);
    drainPostedEvents();
    notifier.notify(kLow);
    ASSERT_TRUE(shownCount(3));
    EXPECT_EQ(server.shown().at(2).replacesId, 0u);
    EXPECT_EQ(log.str(), "");
}

TEST_F(SessionBusNotifierTest, OnlyTheDefaultActionOfTheNoticeShownOpensTheDashboardWithItsToken) {
    ASSERT_TRUE(server.start());
    notifier.notify(kLow);
    ASSERT_TRUE(shownCount(1));
    const uint id = server.shown().at(0).id;
    server.invoke(id + 1, "default", "someone-else");
    server.invoke(id, "other", "token-0");
    server.invoke(id, "default", "token-1");
    ASSERT_TRUE(waitUntil([&] { return opened.size() == 1; }));
    server.invoke(id, "default");
    ASSERT_TRUE(waitUntil([&] { return opened.size() == 2; }));
    EXPECT_EQ(opened, (QStringList{"token-1", ""}));
    server.close(id);
    server.invoke(id, "default");
    drainPostedEvents();
    EXPECT_EQ(opened.size(), 2);
}

class SessionBusNotifierWithoutActionsTest : public SessionBusNotifierTest {
protected:
    SessionBusNotifierWithoutActionsTest()
        : SessionBusNotifierTest({QStringLiteral("body")}) {}
};

TEST_F(SessionBusNotifierWithoutActionsTest, AServerWithoutActionsIsOfferedNone) {
    ASSERT_TRUE(server.start());
    notifier.notify(kLow);
    ASSERT_TRUE(shownCount(1));
    EXPECT_EQ(server.shown().at(0).actions, QStringList());
    EXPECT_EQ(server.shown().at(0).body, "$0.80 left, at or below the warning level of $1.00.");
}

TEST_F(SessionBusNotifierTest, WithoutAServerNothingIsShownAndOneLineSaysSoOnce) {
    notifier.notify(kLow);
    ASSERT_TRUE(waitUntil([&] { return !log.str().empty(); }));
    notifier.notify(kLow);
    // The second call fails as the first did; its answer comes before the server's below.
    EXPECT_EQ(log.str(),
              "quorvane: no notification server answered (org.freedesktop.DBus.Error.ServiceUnknown); "
              "a low balance shows only in the panel\n");

    ASSERT_TRUE(server.start());
    notifier.notify(kLow);
    ASSERT_TRUE(shownCount(1));
    EXPECT_EQ(server.shown().at(0).replacesId, 0u);
}

} // namespace
} // namespace quorvane
