#include "gui/QtKeyDialog.h"

#include "GuiFakePlatform.h"
#include "app/AppDelegate.h"
#include "gui/QtAlert.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>

namespace quorvane {
namespace {

// Runs `act` on the dialog once it is up, from inside its modal loop.
void whenDialogOpens(std::function<void(QtKeyDialog&)> act) {
    QTimer::singleShot(0, [act = std::move(act)] {
        auto* dialog = qobject_cast<QtKeyDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr) << "no key dialog is open";
        act(*dialog);
    });
}

void typeKey(QtKeyDialog& dialog, const QString& text) {
    auto* field = dialog.findChild<QLineEdit*>();
    field->selectAll();
    QTest::keyClicks(field, text);
}

class QtKeyDialogTest : public ::testing::Test {
protected:
    GuiFakePlatform gui;
    QtAlert alert;
    AppDelegate delegate{gui.platformWith(alert)};
};

TEST_F(QtKeyDialogTest, ReturnSavesTheTypedKeyAndEscapeCancels) {
    gui.fake.storeKey("sk-old");
    whenDialogOpens([](QtKeyDialog& dialog) {
        auto* field = dialog.findChild<QLineEdit*>();
        EXPECT_EQ(field->echoMode(), QLineEdit::Password);
        EXPECT_EQ(field->size(), QSize(420, 24));
        EXPECT_EQ(field->minimumSize(), field->maximumSize());
        EXPECT_EQ(field->placeholderText(), "sk-...");
        EXPECT_EQ(field->text(), "sk-old");
        typeKey(dialog, "sk-typed");
        QTest::keyClick(field, Qt::Key_Escape);
    });
    delegate.perform(MenuCommand::SetAPIKey);
    EXPECT_EQ(KeychainStore(gui.fake.secrets).read(), "sk-old");
    EXPECT_TRUE(gui.fake.http.requests().empty());

    whenDialogOpens([](QtKeyDialog& dialog) {
        typeKey(dialog, "  sk-new  ");
        QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Return);
    });
    delegate.perform(MenuCommand::SetAPIKey);
    EXPECT_EQ(KeychainStore(gui.fake.secrets).read(), "sk-new");
    EXPECT_EQ(gui.fake.http.requests().size(), 1u) << "saving starts a refresh";
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(QtAlertTest, EachButtonAnswersItsPlaceAndClosingAnswersTheLast) {
    AlertRequest request{"Title", "Some words.", {"Save", "Later", "Cancel"}, Size{200, 30}, "hint", "typed"};
    QtAlert alert;
    whenDialogOpens([](QtKeyDialog& dialog) {
        for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
            if (button->text() == "Later") {
                button->click();
            }
        }
    });
    const AlertResponse later = alert.runModal(request);
    EXPECT_EQ(later.button, kAlertFirstButtonReturn + 1);
    EXPECT_EQ(later.fieldText, "typed");
    whenDialogOpens([](QtKeyDialog& dialog) { dialog.close(); });
    EXPECT_EQ(alert.runModal(request).button, kAlertFirstButtonReturn + 2);
}

TEST(QtKeyDialogLayoutTest, TakingTheTextLeavesNothingInTheField) {
    const AlertRequest request{"Key", "", {"Save", "Cancel"}, Size{420, 24}, "sk-...", "sk-secret"};
    QtKeyDialog dialog(request);
    auto* field = dialog.findChild<QLineEdit*>();
    QTest::keyClicks(field, "-more");
    EXPECT_EQ(dialog.takeFieldText(), "sk-secret-more");
    EXPECT_EQ(field->text(), QString());
    EXPECT_FALSE(field->isUndoAvailable());
    EXPECT_EQ(dialog.buttonAnswer(), kAlertFirstButtonReturn + 1) << "nothing pressed yet reads as Cancel";
}

} // namespace
} // namespace quorvane
