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

TEST_F(QtKeyDialogTest, ReturnSavesTheTypedKeyAndRefreshes) {
    gui.fake.storeKey("sk-old");
    whenDialogOpens([](QtKeyDialog& dialog) {
        const auto* field = dialog.findChild<QLineEdit*>();
        EXPECT_EQ(field->echoMode(), QLineEdit::Password);
        EXPECT_EQ(field->size(), QSize(420, 24));
        EXPECT_EQ(field->minimumSize(), field->maximumSize());
        EXPECT_EQ(field->placeholderText(), "sk-...");
        EXPECT_EQ(field->text(), "sk-old");
        typeKey(dialog, "  sk-new  ");
        QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Return);
    });
    delegate.perform(MenuCommand::SetAPIKey);

    EXPECT_EQ(delegate.keychain().read(), "sk-new");
    EXPECT_EQ(gui.fake.http.requests().size(), 1u) << "saving starts a refresh";
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(QtKeyDialogTest, EscapeCancelsAndKeepsTheStoredKey) {
    gui.fake.storeKey("sk-old");
    whenDialogOpens([](QtKeyDialog& dialog) {
        typeKey(dialog, "sk-typed");
        QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Escape);
    });
    delegate.perform(MenuCommand::SetAPIKey);

    EXPECT_EQ(delegate.keychain().read(), "sk-old");
    EXPECT_TRUE(gui.fake.http.requests().empty());
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

TEST(QtKeyDialogLayoutTest, TheFirstButtonIsTheDefaultAtTheRightEnd) {
    const AlertRequest request{"DeepSeek API Key", "Paste it.", {"Save", "Cancel"},
                               Size{420, 24},      "sk-...",    ""};
    QtKeyDialog dialog(request);
    dialog.show();
    QApplication::processEvents();

    QPushButton* save = nullptr;
    QPushButton* cancel = nullptr;
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
        (button->text() == "Save" ? save : cancel) = button;
    }
    ASSERT_TRUE(save && cancel);
    EXPECT_TRUE(save->isDefault());
    EXPECT_FALSE(cancel->isDefault());
    EXPECT_GT(save->x(), cancel->x());

    const auto labels = dialog.findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 2);
    EXPECT_EQ(labels[0]->text(), "DeepSeek API Key");
    EXPECT_TRUE(labels[0]->font().bold());
    EXPECT_GT(QFontInfo(labels[0]->font()).pixelSize(), QFontInfo(labels[1]->font()).pixelSize());
    EXPECT_EQ(labels[1]->text(), "Paste it.");
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
