// These run only inside run-with-keyring.sh, against a real gnome-keyring in
// a private session bus (CTest's linux_secret_service test).
#include "platform/SecretServiceStore.h"

#include "platform/FileSecretStore.h"
#include "platform/SecretStatus.h"
#include "platform/SecretStoreSelector.h"

#include <QProcess>
#include <QStringList>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>

namespace quorvane {
namespace {

const std::string kService = "Quorvane";

// Each test works on an account of its own, so that no test sees another's item.
class SecretServiceStoreTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::ostringstream silence;
        ASSERT_TRUE(SecretStoreSelector(silence).secretServiceAnswers())
            << "no Secret Service on this session bus; run through run-with-keyring.sh";
        m_account =
            std::string("DeepSeekAPIKey.") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
        m_store.remove(kService, m_account);
    }
    void TearDown() override { m_store.remove(kService, m_account); }

    SecretServiceStore m_store;
    std::string m_account;
};

// What another client of the Secret Service finds under the two attributes.
QString secretToolLookup(const std::string& service, const std::string& account) {
    QProcess tool;
    tool.start(QStringLiteral("secret-tool"),
               {QStringLiteral("lookup"), QStringLiteral("service"), QString::fromStdString(service),
                QStringLiteral("account"), QString::fromStdString(account)});
    tool.waitForFinished(30000);
    return QString::fromUtf8(tool.readAllStandardOutput());
}

TEST_F(SecretServiceStoreTest, AddCreatesUpdateReplacesAndNeitherOverstepsItsPart) {
    EXPECT_EQ(m_store.copy(kService, m_account).status, kSecretStatusItemNotFound);
    EXPECT_EQ(m_store.update(kService, m_account, "sk-new"), kSecretStatusItemNotFound);
    EXPECT_EQ(m_store.copy(kService, m_account).status, kSecretStatusItemNotFound);
    EXPECT_EQ(m_store.remove(kService, m_account), kSecretStatusItemNotFound);

    EXPECT_EQ(m_store.add(kService, m_account, "sk-first"), kSecretStatusSuccess);
    EXPECT_EQ(m_store.add(kService, m_account, "sk-again"), kSecretStatusDuplicateItem);
    SecretCopyResult first = m_store.copy(kService, m_account);
    EXPECT_EQ(first.status, kSecretStatusSuccess);
    EXPECT_EQ(first.data, "sk-first");

    EXPECT_EQ(m_store.update(kService, m_account, "sk-second"), kSecretStatusSuccess);
    EXPECT_EQ(m_store.copy(kService, m_account).data, "sk-second");

    EXPECT_EQ(m_store.remove(kService, m_account), kSecretStatusSuccess);
    EXPECT_EQ(m_store.remove(kService, m_account), kSecretStatusItemNotFound);
    EXPECT_EQ(m_store.copy(kService, m_account).status, kSecretStatusItemNotFound);
}

TEST_F(SecretServiceStoreTest, ValuesAreKeptAsBytes) {
    const std::string values[] = {
        "sk-0123456789abcdef",
        "",
        "  blanks around  ",
        "🐋 non-ASCII",
        std::string("nul\0inside", 10),
        "\xff\xfe not UTF-8",
        std::string(4096, 'k'),
    };
    for (const std::string& value : values) {
        ASSERT_EQ(m_store.add(kService, m_account, value), kSecretStatusSuccess);
        SecretCopyResult copied = m_store.copy(kService, m_account);
        EXPECT_EQ(copied.status, kSecretStatusSuccess);
        EXPECT_EQ(copied.data, value);
        ASSERT_EQ(m_store.remove(kService, m_account), kSecretStatusSuccess);
    }
}

TEST_F(SecretServiceStoreTest, ItemsAreFoundByServiceAndAccountAlone) {
    std::string other = m_account + ".other";
    ASSERT_EQ(m_store.add(kService, m_account, "sk-mine"), kSecretStatusSuccess);
    ASSERT_EQ(m_store.add(kService, other, "sk-other"), kSecretStatusSuccess);
    ASSERT_EQ(m_store.add("Quorvane.Other", m_account, "sk-elsewhere"), kSecretStatusSuccess);

    EXPECT_EQ(m_store.remove(kService, other), kSecretStatusSuccess);
    EXPECT_EQ(m_store.copy(kService, m_account).data, "sk-mine");
    EXPECT_EQ(m_store.copy("Quorvane.Other", m_account).data, "sk-elsewhere");
    // Other tools see the same item under the same two attributes...
    EXPECT_EQ(secretToolLookup(kService, m_account), QStringLiteral("sk-mine"));
    EXPECT_EQ(m_store.remove("Quorvane.Other", m_account), kSecretStatusSuccess);

    // ...and an item they made is the program's item.
    QProcess tool;
    tool.start(QStringLiteral("secret-tool"),
               {QStringLiteral("store"), QStringLiteral("--label=by hand"), QStringLiteral("service"),
                QString::fromStdString(kService), QStringLiteral("account"), QString::fromStdString(other)});
    tool.write("sk-by-hand");
    tool.closeWriteChannel();
    ASSERT_TRUE(tool.waitForFinished(30000));
    ASSERT_EQ(tool.exitCode(), 0);
    EXPECT_EQ(m_store.copy(kService, other).data, "sk-by-hand");
    EXPECT_EQ(m_store.update(kService, other, "sk-replaced"), kSecretStatusSuccess);
    EXPECT_EQ(secretToolLookup(kService, other), QStringLiteral("sk-replaced"));
    EXPECT_EQ(m_store.remove(kService, other), kSecretStatusSuccess);
}

TEST(SecretServiceSelectionTest, AnAnsweringSecretServiceIsChosenSilently) {
    std::ostringstream announcements;
    SecretStoreSelector selector(announcements);
    EXPECT_TRUE(selector.secretServiceAnswers());
    EXPECT_NE(dynamic_cast<SecretServiceStore*>(selector.select().get()), nullptr);
    EXPECT_EQ(announcements.str(), "");
}

// Runs inside a session bus that has no Secret Service and cannot start one
// (CTest's linux_bare_session_bus test).
TEST(BareSessionBusTest, ABusWithoutTheServiceFallsBackToTheFile) {
    ASSERT_NE(std::getenv("DBUS_SESSION_BUS_ADDRESS"), nullptr);
    std::ostringstream announcements;
    SecretStoreSelector selector(announcements);
    EXPECT_FALSE(selector.secretServiceAnswers());
    auto store = selector.select();
    auto* file = dynamic_cast<FileSecretStore*>(store.get());
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(announcements.str(), "Quorvane: no Secret Service answered; keeping the API key in " +
                                       file->filePath() + ", readable by you alone.\n");
}

} // namespace
} // namespace quorvane
