// These run only inside run-with-keyring.sh, against a real gnome-keyring in
// a private session bus (CTest's linux_secret_service test).
#include "services/SecretServiceStore.h"

#include "services/FileSecretStore.h"
#include "services/MigratingSecretStore.h"
#include "services/SecretStatus.h"
#include "services/SecretStoreSelector.h"

#include <QProcess>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>

namespace quorvane {
namespace {

const std::string kService = "Quorvane";

// Runs secret-tool, another client of the Secret Service, and returns what it printed.
QString secretTool(QStringList arguments, const QByteArray& input = {}) {
    QProcess tool;
    tool.start(QStringLiteral("secret-tool"), arguments);
    tool.write(input);
    tool.closeWriteChannel();
    EXPECT_TRUE(tool.waitForFinished(30000));
    EXPECT_EQ(tool.exitCode(), 0);
    return QString::fromUtf8(tool.readAllStandardOutput());
}

TEST(SecretServiceStoreTest, ItemsAreKeptAsBytesUnderServiceAndAccountAlone) {
    std::ostringstream announcements;
    SecretStoreSelector selector(announcements);
    ASSERT_TRUE(selector.secretServiceAnswers()) << "no Secret Service here; run through run-with-keyring.sh";
    EXPECT_NE(dynamic_cast<MigratingSecretStore*>(selector.select().get()), nullptr);
    EXPECT_EQ(announcements.str(), "") << "an answering Secret Service is chosen silently";

    SecretServiceStore store;
    const std::string account = "DeepSeekAPIKey";
    const std::string other = "DeepSeekAPIKey.other";
    EXPECT_EQ(store.copy(kService, account).status, kSecretStatusItemNotFound);
    EXPECT_EQ(store.update(kService, account, "sk-new"), kSecretStatusItemNotFound);
    EXPECT_EQ(store.copy(kService, account).status, kSecretStatusItemNotFound);
    EXPECT_EQ(store.remove(kService, account), kSecretStatusItemNotFound);
    for (const std::string& value : {std::string(), std::string("nul\0inside", 10),
                                     std::string("\xff\xfe not UTF-8"), std::string(4096, 'k')}) {
        ASSERT_EQ(store.add(kService, account, value), kSecretStatusSuccess);
        SecretCopyResult copied = store.copy(kService, account);
        EXPECT_EQ(copied.status, kSecretStatusSuccess);
        EXPECT_EQ(copied.data, value);
        ASSERT_EQ(store.remove(kService, account), kSecretStatusSuccess);
    }

    EXPECT_EQ(store.add(kService, account, "sk-first"), kSecretStatusSuccess);
    EXPECT_EQ(store.add(kService, account, "sk-again"), kSecretStatusDuplicateItem);
    ASSERT_EQ(store.add(kService, other, "sk-other"), kSecretStatusSuccess);
    ASSERT_EQ(store.add("Quorvane.Other", account, "sk-elsewhere"), kSecretStatusSuccess);
    EXPECT_EQ(store.update(kService, account, "sk-mine"), kSecretStatusSuccess);
    EXPECT_EQ(store.remove(kService, other), kSecretStatusSuccess);
    EXPECT_EQ(store.remove(kService, other), kSecretStatusItemNotFound);
    EXPECT_EQ(store.copy(kService, account).data, "sk-mine");
    EXPECT_EQ(store.copy("Quorvane.Other", account).data, "sk-elsewhere");

    // Other tools see the same item under the same two attributes, and an
    // item they made is the program's item.
    const QString service = QString::fromStdString(kService);
    EXPECT_EQ(secretTool({"lookup", "service", service, "account", QString::fromStdString(account)}),
              "sk-mine");
    secretTool({"store", "--label=by hand", "service", service, "account", QString::fromStdString(other)},
               "sk-by-hand");
    EXPECT_EQ(store.copy(kService, other).data, "sk-by-hand");
    EXPECT_EQ(store.update(kService, other, "sk-replaced"), kSecretStatusSuccess);
    EXPECT_EQ(secretTool({"lookup", "service", service, "account", QString::fromStdString(other)}),
              "sk-replaced");
    for (const auto& [name, item] :
         {std::pair{kService, account}, {kService, other}, {"Quorvane.Other", account}}) {
        EXPECT_EQ(store.remove(name, item), kSecretStatusSuccess);
    }
}

// The keyring did not answer once, so the key went to the file; now it
// answers, and the key is found, moved into it, and the file is gone.
TEST(SecretServiceStoreTest, AKeyKeptInTheFileWhileTheServiceWasAwayMovesIntoIt) {
    const std::string account = "DeepSeekAPIKey";
    FileSecretStore file(FileSecretStore::defaultPath());
    ASSERT_EQ(file.add(kService, account, "sk-saved-while-away"), kSecretStatusSuccess);
    ASSERT_EQ(SecretServiceStore().add(kService, account, "sk-older"), kSecretStatusSuccess);

    std::ostringstream announcements;
    auto store = SecretStoreSelector(announcements).select();
    EXPECT_EQ(store->copy(kService, account).data, "sk-saved-while-away");
    EXPECT_EQ(file.copy(kService, account).status, kSecretStatusItemNotFound);
    EXPECT_EQ(secretTool({"lookup", "service", QString::fromStdString(kService), "account",
                          QString::fromStdString(account)}),
              "sk-saved-while-away");
    EXPECT_EQ(announcements.str(), "") << "the key is never shown";
    EXPECT_EQ(store->remove(kService, account), kSecretStatusSuccess);
    EXPECT_EQ(SecretServiceStore().copy(kService, account).status, kSecretStatusItemNotFound);
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
