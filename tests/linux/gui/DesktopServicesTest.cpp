// What the app asks of the desktop: the low-balance notice, the key dialog, and coming forward.
#include "gui/MenuPanel.h"
#include "gui/QtAlert.h"
#include "gui/QtKeyDialog.h"
#include "linux/EventLoopWait.h"
#include "services/QtApplication.h"
#include "tray/FreedesktopNotifier.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace quorvane {
namespace {

using namespace std::string_literals;

const Notification kLow{"DeepSeek balance is low", "$0.80 left, at or below the warning level of $1.00."};

// The app on the session bus, and the desktop's notification server in a
// process of its own, played by quorvane_fake_notifications.
class SessionBusNotifierTest : public ::testing::Test {
protected:
    void startServer() {
        server.start(QUORVANE_FAKE_NOTIFICATIONS, {});
        ASSERT_EQ(line(), "ready");
    }
    QByteArray line() {
        waitUntil([&] { return server.canReadLine(); });
        return server.readLine().trimmed();
    }
    // The next notice the server shows, or what else it says.
    QJsonObject shown() { return QJsonDocument::fromJson(line()).object(); }
    void tell(const QByteArray& command) { server.write(command + "\n"); }

    QProcess server;
    std::ostringstream log;
    QStringList opened;
    FreedesktopNotifier notifier{QDBusConnection::sessionBus(),
                                 QImage(64, 64, QImage::Format_ARGB32_Premultiplied),
                                 [this](const QString& token) { opened << token; }, log};
};

TEST_F(SessionBusNotifierTest, ANoticeCarriesTheAppItsTextAndIconAndReplacesTheOneStillShown) {
    startServer();
    notifier.notify(kLow);
    EXPECT_EQ(line(), R"({"actions":["default","Open Quorvane"],"appIcon":"app.quorvane.Quorvane",)"
                      R"("appName":"Quorvane","body":"$0.80 left, at or below the warning level of $1.00.",)"
                      R"("desktopEntry":"app.quorvane.Quorvane","expireTimeout":-1,"id":1,"image":"64x64",)"
                      R"("replacesId":0,"summary":"DeepSeek balance is low","urgency":1})");
    notifier.notify(kLow);
    EXPECT_EQ(shown()["replacesId"], 1);
    tell("close 1");
    EXPECT_EQ(line(), R"({"closed":1})");
    notifier.notify(kLow);
    EXPECT_EQ(shown()["replacesId"], 0);
    EXPECT_EQ(log.str(), "");
}

TEST_F(SessionBusNotifierTest, OnlyTheDefaultActionOfTheNoticeShownOpensTheDashboardWithItsToken) {
    startServer();
    notifier.notify(kLow);
    ASSERT_EQ(shown()["id"], 1);
    tell("invoke 2 default someone-else\ninvoke 1 other token-0\ninvoke 1 default token-1\ninvoke 1 default");
    ASSERT_TRUE(waitUntil([&] { return opened.size() == 2; }));
    EXPECT_EQ(opened, (QStringList{"token-1", ""}));

    tell("close 1\ninvoke 1 default");
    EXPECT_EQ(line(), R"({"closed":1})");
    notifier.notify(kLow);
    ASSERT_EQ(shown()["id"], 2);
    tell("invoke 2 default token-2");
    ASSERT_TRUE(waitUntil([&] { return opened.size() == 3; }));
    EXPECT_EQ(opened.last(), "token-2") << "the closed notice's click opened nothing";
}

// A server that cannot show actions is offered none; with no server at all
// the app says so once, on its log, and goes on.
TEST_F(SessionBusNotifierTest, APlainServerIsOfferedNoActionAndNoServerIsOneLineForTheWholeRun) {
    startServer();
    tell("plain");
    ASSERT_EQ(line(), R"({"plain":true})");
    notifier.notify(kLow);
    EXPECT_EQ(shown().value("actions").toArray().size(), 0);

    tell("stop");
    ASSERT_EQ(line(), R"({"stopped":true})");
    for (int fall = 0; fall < 3; ++fall) {
        notifier.notify(kLow);
        drainPostedEvents();
    }
    ASSERT_TRUE(waitUntil([&] { return !log.str().empty(); }));
    drainPostedEvents();
    const std::string said = log.str();
    EXPECT_TRUE(said.starts_with("quorvane: no notification server answered (")) << said;
    EXPECT_TRUE(said.ends_with("); a low balance shows only in the panel\n")) << said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
}

TEST(QtAlertTest, ReturnInTheFieldPressesTheFirstButtonAndEscapeTheLast) {
    QtAlert alert;
    // Types a key over the old one, selected as the field opens, and presses `key` from inside
    // the dialog's modal loop; then closes it should the key not have.
    const auto answer = [&alert](Qt::Key key) {
        QTimer::singleShot(0, [key] {
            QWidget* dialog = QApplication::activeModalWidget();
            QTest::keyClicks(dialog->findChild<QLineEdit*>(), "sk-new");
            QTest::keyClick(dialog->findChild<QLineEdit*>(), key);
            dialog->close();
        });
        return alert.runModal(
            {"Key", "Words.", {"Save", "Later", "Cancel"}, Size{420, 24}, "sk-...", "sk-old"});
    };
    const AlertResponse saved = answer(Qt::Key_Return);
    EXPECT_EQ(std::make_pair(saved.button, saved.fieldText),
              std::make_pair(kAlertFirstButtonReturn, "sk-new"s));
    EXPECT_EQ(answer(Qt::Key_Escape).button, kAlertFirstButtonReturn + 2);
}

TEST(QtKeyDialogTest, TheFieldHidesTheKeyAndTakingItsTextLeavesNothingInIt) {
    const AlertRequest request{"Key", "", {"Save", "Cancel"}, Size{420, 24}, "sk-...", "sk-secret"};
    QtKeyDialog dialog(request);
    auto* field = dialog.findChild<QLineEdit*>();
    EXPECT_EQ(field->echoMode(), QLineEdit::Password);
    EXPECT_EQ(field->maximumSize(), QSize(420, 24));
    EXPECT_EQ(field->placeholderText(), "sk-...");
    QTest::keyClicks(field, "-more");
    EXPECT_EQ(dialog.takeFieldText(), "sk-secret-more");
    EXPECT_EQ(field->text(), QString());
    EXPECT_FALSE(field->isUndoAvailable());
    EXPECT_EQ(dialog.buttonAnswer(), kAlertFirstButtonReturn + 1) << "nothing pressed yet reads as Cancel";
}

// Before the key dialog the app comes forward: its window takes the focus from wherever it was.
TEST(QtApplicationTest, ActivatingGivesTheAppsWindowTheFocus) {
    MenuPanel window(MenuPanel::Role::Window, {});
    window.show();
    QWidget elsewhere;
    elsewhere.show();
    ASSERT_TRUE(waitUntil([&] { return QGuiApplication::focusWindow() == elsewhere.windowHandle(); }));
    elsewhere.hide();
    QtApplication().activateIgnoringOtherApps();
    EXPECT_TRUE(waitUntil([&] { return QGuiApplication::focusWindow() == window.windowHandle(); }));
}

} // namespace
} // namespace quorvane
