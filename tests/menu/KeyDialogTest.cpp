#include "menu/KeyDialog.h"

#include "fakes/DelegateTest.h"

namespace quorvane {
namespace {

TEST(KeyDialogTest, TrimsWhiteSpaceAndLineBreaksAtBothEndsOnly) {
    struct Case {
        std::string typed;
        std::optional<std::string> saved;
    };
    const Case cases[] = {
        {"sk-abc", "sk-abc"},
        {" \t sk-abc \r\n", "sk-abc"},
        {"\n\nsk-a b c\n", "sk-a b c"},
        {"\xC2\xA0sk-abc\xE2\x80\xA8", "sk-abc"}, // no-break space, line separator
        {"\xE3\x80\x80sk-\xE3\x80\x80"
         "abc\xE2\x80\x83",
         "sk-\xE3\x80\x80"
         "abc"},
        {"", std::nullopt},
        {"   \n\t  ", std::nullopt},
        {"\xE2\x80\x83", std::nullopt},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(KeyDialog::acceptedKey({kAlertFirstButtonReturn, c.typed}), c.saved) << c.typed;
        EXPECT_EQ(KeyDialog::acceptedKey({kAlertFirstButtonReturn + 1, c.typed}), std::nullopt) << c.typed;
    }
}

using KeyCommandsTest = DelegateTest;

TEST_F(KeyCommandsTest, SaveStoresTheTrimmedKeyResetsBaselinesThenRefreshes) {
    fake.storeKey("sk-old");
    fake.settings.setValue("dayKey", std::string("2026-11-21"));
    fake.desktop.answerAlert(kAlertFirstButtonReturn, "  sk-new \n");
    delegate.setAPIKeyClicked();

    ASSERT_EQ(fake.desktop.alerts().size(), 1u);
    const AlertRequest& shown = fake.desktop.alerts()[0];
    EXPECT_EQ(shown.messageText, "DeepSeek API Key");
    EXPECT_EQ(shown.informativeText, "Paste your DeepSeek API key. It will be stored in macOS Keychain.");
    EXPECT_EQ(shown.buttons, (std::vector<std::string>{"Save", "Cancel"}));
    EXPECT_EQ(shown.fieldSize, (Size{420, 24}));
    EXPECT_EQ(shown.placeholder, "sk-...");
    EXPECT_EQ(shown.initialText, "sk-old");
    EXPECT_EQ(fake.desktop.log(), (std::vector<std::string>{"activate", "alert"}));

    EXPECT_EQ(fake.secrets.item("Quorvane", "DeepSeekAPIKey"), "sk-new");
    EXPECT_FALSE(fake.settings.value("dayKey"));
    ASSERT_EQ(fake.http.requests().size(), 1u);
    EXPECT_EQ(fake.http.requests()[0].headers[1].second, "Bearer sk-new");
    EXPECT_EQ(fake.statusItem.title(), "\xF0\x9F\x90\x8B ...");
}

TEST_F(KeyCommandsTest, CancelAndBlankInputChangeNothing) {
    fake.storeKey("sk-kept");
    fake.settings.setValue("dayKey", std::string("2026-11-21"));
    fake.desktop.answerAlert(kAlertFirstButtonReturn + 1, "sk-typed-then-cancelled");
    fake.desktop.answerAlert(kAlertFirstButtonReturn, " \n ");
    delegate.setAPIKeyClicked();
    delegate.setAPIKeyClicked();

    EXPECT_EQ(fake.secrets.item("Quorvane", "DeepSeekAPIKey"), "sk-kept");
    EXPECT_TRUE(fake.settings.value("dayKey"));
    EXPECT_TRUE(fake.http.requests().empty());
    EXPECT_TRUE(fake.statusItem.titles().empty());

    fake.secrets.failCopy(kSecretStatusItemNotFound);
    fake.desktop.answerAlert(kAlertFirstButtonReturn + 1, "");
    delegate.setAPIKeyClicked();
    EXPECT_EQ(fake.desktop.alerts().back().initialText, "") << "no stored key: an empty field";
}

TEST_F(KeyCommandsTest, RemovalClearsTheResultTwiceInARow) {
    fake.storeKey("sk-test");
    delegate.refreshClicked();
    fake.http.respond(200, balanceBody({{"USD", "5"}}));
    const auto historyBefore = delegate.allHistory();

    for (int i = 0; i < 2; ++i) {
        delegate.removeAPIKeyClicked();
        EXPECT_EQ(fake.secrets.item("Quorvane", "DeepSeekAPIKey"), std::nullopt);
        EXPECT_EQ(delegate.lastResponse(), std::nullopt);
        EXPECT_EQ(delegate.lastError(), std::nullopt);
        EXPECT_EQ(delegate.lastUpdatedAt(), std::nullopt);
        EXPECT_EQ(fake.statusItem.title(), "\xF0\x9F\x90\x8B DS");
        EXPECT_EQ(fake.statusItem.menu().size(), 7u);
        EXPECT_NE(fake.statusItem.menuText().find("No API key yet"), std::string::npos);
        EXPECT_EQ(fake.statusItem.menuText().find("Details"), std::string::npos);
    }
    EXPECT_EQ(delegate.allHistory(), historyBefore);
    EXPECT_TRUE(fake.settings.value("dayKey"));
}

} // namespace
} // namespace quorvane
