#include "EventLoopWait.h"
#include "platform/QtApplication.h"
#include "platform/QtPasteboard.h"
#include "platform/QtWorkspace.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <QWindow>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {

// Stands in for the desktop's handler of web addresses.
class UrlRecorder : public QObject {
    Q_OBJECT

public:
    std::vector<std::string> opened;

public slots:
    void open(const QUrl& url) { opened.push_back(url.toString(QUrl::FullyEncoded).toStdString()); }
};

namespace {

TEST(QtPasteboardTest, WritesPlainTextAndClearsIt) {
    QtPasteboard pasteboard;
    QClipboard* clipboard = QGuiApplication::clipboard();

    pasteboard.clearContents();
    pasteboard.writeString("🐋 Balance: $12.34\nSpent today: $0.56");
    EXPECT_EQ(clipboard->text().toStdString(), "🐋 Balance: $12.34\nSpent today: $0.56");

    pasteboard.writeString("second");
    EXPECT_EQ(clipboard->text().toStdString(), "second");

    pasteboard.clearContents();
    EXPECT_EQ(clipboard->text().toStdString(), "");
}

TEST(QtWorkspaceTest, HandsValidAddressesToTheDesktopAndDropsOthers) {
    UrlRecorder recorder;
    QDesktopServices::setUrlHandler(QStringLiteral("https"), &recorder, "open");
    QtWorkspace workspace;

    workspace.openUrl("https://platform.deepseek.com/usage");
    workspace.openUrl("https://example.com/a%20b?q=1#frag");
    workspace.openUrl("https://exa mple.com/");
    workspace.openUrl("no scheme at all");
    workspace.openUrl("");

    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    EXPECT_EQ(recorder.opened, (std::vector<std::string>{"https://platform.deepseek.com/usage",
                                                         "https://example.com/a%20b?q=1#frag"}));
}

TEST(QtApplicationTest, ActivatingBringsTheFirstVisibleWindowForward) {
    QtApplication application;
    application.setAccessoryPolicy();
    // Nothing to bring forward: nothing happens.
    application.activateIgnoringOtherApps();

    // Menus are never what comes forward, even when listed first.
    QWindow menu;
    menu.setFlags(Qt::Popup);
    menu.resize(50, 50);
    menu.show();
    QWindow strip;
    strip.resize(200, 24);
    strip.show();
    QWindow dialog;
    dialog.resize(100, 100);
    dialog.show();
    dialog.requestActivate();
    ASSERT_TRUE(waitUntil([&] { return QGuiApplication::focusWindow() == &dialog; }));
    // The focus stays with the hidden window until something else takes it.
    dialog.hide();
    drainPostedEvents();
    ASSERT_EQ(QGuiApplication::focusWindow(), &dialog);

    application.activateIgnoringOtherApps();

    ASSERT_TRUE(waitUntil([&] { return QGuiApplication::focusWindow() == &strip; }));
    EXPECT_TRUE(strip.isActive());
}

TEST(QtApplicationTest, TerminatingLeavesTheRunningEventLoop) {
    QtApplication application;
    bool guardFired = false;
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, [&] {
        guardFired = true;
        QCoreApplication::exit(7);
    });
    guard.start(15000);
    QTimer::singleShot(0, [&] { application.terminate(); });

    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_FALSE(guardFired);
}

} // namespace
} // namespace quorvane

#include "QtDesktopAdaptersTest.moc"
