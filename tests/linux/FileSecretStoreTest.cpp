#include "platform/FileSecretStore.h"

#include "platform/SecretStatus.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane {
namespace {

const std::string kService = "Quorvane";
const std::string kAccount = "DeepSeekAPIKey";

std::optional<std::string> fileContent(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void writeFile(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
}

mode_t modeOf(const std::string& path) {
    struct stat info {};
    ::stat(path.c_str(), &info);
    return info.st_mode & 07777;
}

QStringList entriesOf(const std::string& folder) {
    return QDir(QString::fromStdString(folder))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

class FileSecretStoreTest : public ::testing::Test {
protected:
    std::string folder() const { return m_root.filePath(QStringLiteral("config/quorvane")).toStdString(); }
    std::string path() const { return folder() + "/secrets"; }

    QTemporaryDir m_root;
};

TEST_F(FileSecretStoreTest, TheFileIsTheUsersAloneWhateverTheUmask) {
    for (mode_t umaskValue : {mode_t{0}, mode_t{022}, mode_t{0277}}) {
        std::string base = m_root.filePath(QStringLiteral("umask%1").arg(umaskValue)).toStdString();
        std::string file = base + "/config/quorvane/secrets";
        mode_t previous = ::umask(umaskValue);
        FileSecretStore store(file);
        std::int32_t added = store.add(kService, kAccount, "sk-one");
        std::int32_t updated = store.update(kService, kAccount, "sk-two");
        ::umask(previous);

        EXPECT_EQ(added, kSecretStatusSuccess) << umaskValue;
        EXPECT_EQ(updated, kSecretStatusSuccess) << umaskValue;
        EXPECT_EQ(modeOf(file), 0600u) << umaskValue;
        EXPECT_EQ(modeOf(base + "/config/quorvane"), 0700u) << umaskValue;
        EXPECT_EQ(modeOf(base + "/config"), 0700u) << umaskValue;
        EXPECT_EQ(entriesOf(base + "/config/quorvane"), QStringList{QStringLiteral("secrets")}) << umaskValue;
    }
}

TEST_F(FileSecretStoreTest, ValuesOfAnyBytesRoundTrip) {
    std::string everyByte;
    for (int b = 255; b >= 0; --b) {
        everyByte.push_back(static_cast<char>(b));
    }
    const std::string values[] = {
        "sk-0123456789abcdef",
        "",
        "  blanks around  ",
        std::string("nul\0inside", 10),
        "3:abc,\n4:",
        "quorvane-secrets 1\n",
        everyByte,
        std::string(100000, 'k'),
    };
    for (const std::string& value : values) {
        FileSecretStore store(path());
        ASSERT_EQ(store.add(kService, kAccount, value), kSecretStatusSuccess);
        FileSecretStore reopened(path());
        SecretCopyResult copied = reopened.copy(kService, kAccount);
        EXPECT_EQ(copied.status, kSecretStatusSuccess);
        EXPECT_EQ(copied.data, value);
        ASSERT_EQ(reopened.remove(kService, kAccount), kSecretStatusSuccess);
    }
}

TEST_F(FileSecretStoreTest, ItemsAreKeptApartByServiceAndAccount) {
    FileSecretStore store(path());
    ASSERT_EQ(store.add(kService, kAccount, "sk-main"), kSecretStatusSuccess);
    ASSERT_EQ(store.add(kService, "Other", "sk-other"), kSecretStatusSuccess);
    ASSERT_EQ(store.add("1:a,", "\n", "odd names"), kSecretStatusSuccess);
    ASSERT_EQ(store.update(kService, "Other", "sk-other-2"), kSecretStatusSuccess);
    ASSERT_EQ(store.remove(kService, kAccount), kSecretStatusSuccess);

    EXPECT_EQ(store.copy(kService, kAccount).status, kSecretStatusItemNotFound);
    EXPECT_EQ(store.copy(kService, "Other").data, "sk-other-2");
    EXPECT_EQ(store.copy("1:a,", "\n").data, "odd names");
    EXPECT_EQ(store.copy("Quorvane ", kAccount).status, kSecretStatusItemNotFound);
    EXPECT_EQ(fileContent(path()), "quorvane-secrets 1\n"
                                   "8:Quorvane,5:Other,10:sk-other-2,\n"
                                   "4:1:a,,1:\n,9:odd names,\n");
}

TEST_F(FileSecretStoreTest, AddCreatesUpdateReplacesAndNeitherOverstepsItsPart) {
    FileSecretStore store(path());

    EXPECT_EQ(store.update(kService, kAccount, "sk-new"), kSecretStatusItemNotFound);
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(path())));
    EXPECT_EQ(store.remove(kService, kAccount), kSecretStatusItemNotFound);
    EXPECT_EQ(store.copy(kService, kAccount).status, kSecretStatusItemNotFound);

    EXPECT_EQ(store.add(kService, kAccount, "sk-first"), kSecretStatusSuccess);
    EXPECT_EQ(store.add(kService, kAccount, "sk-again"), kSecretStatusDuplicateItem);
    EXPECT_EQ(store.copy(kService, kAccount).data, "sk-first");

    EXPECT_EQ(store.update(kService, kAccount, "sk-second"), kSecretStatusSuccess);
    EXPECT_EQ(store.copy(kService, kAccount).data, "sk-second");

    EXPECT_EQ(store.remove(kService, kAccount), kSecretStatusSuccess);
    EXPECT_EQ(store.remove(kService, kAccount), kSecretStatusItemNotFound);
    EXPECT_EQ(store.copy(kService, kAccount).status, kSecretStatusItemNotFound);
    // The last item gone, no file is left holding anything.
    EXPECT_EQ(entriesOf(folder()), QStringList());
}

TEST_F(FileSecretStoreTest, ACorruptFileReadsAsEmptyAndIsMovedAsideBeforeAnAdd) {
    const std::string corruptions[] = {
        "not a secrets file",
        "quorvane-secrets 2\n8:Quorvane,14:DeepSeekAPIKey,6:sk-old,\n",
        "quorvane-secrets 1\n8:Quorvane,14:DeepSeekAPIKey,6:sk-old",
        "quorvane-secrets 1\n8:Quorvane,14:DeepSeekAPIKey,60:sk-old,\n",
        "quorvane-secrets 1\n08:Quorvane,14:DeepSeekAPIKey,6:sk-old,\n",
        "quorvane-secrets 1\n8:Quorvane,14:DeepSeekAPIKey,99999999:sk-old,\n",
        "quorvane-secrets 1\n8:Quorvane,14:DeepSeekAPIKey,6:sk-old,\ntrailing",
        "quorvane-secrets "
        "1\n8:Quorvane,14:DeepSeekAPIKey,6:sk-old,\n8:Quorvane,14:DeepSeekAPIKey,6:sk-two,\n",
        std::string("\0\0\0\0", 4),
    };
    for (const std::string& corruption : corruptions) {
        QDir(QString::fromStdString(folder())).removeRecursively();
        QDir().mkpath(QString::fromStdString(folder()));
        writeFile(path(), corruption);
        FileSecretStore store(path());

        EXPECT_EQ(store.copy(kService, kAccount).status, kSecretStatusItemNotFound);
        EXPECT_EQ(store.update(kService, kAccount, "sk-new"), kSecretStatusItemNotFound);
        EXPECT_EQ(store.remove(kService, kAccount), kSecretStatusItemNotFound);
        EXPECT_EQ(fileContent(path()), corruption);

        EXPECT_EQ(store.add(kService, kAccount, "sk-new"), kSecretStatusSuccess);
        EXPECT_EQ(store.copy(kService, kAccount).data, "sk-new");
        EXPECT_EQ(fileContent(path() + ".corrupt"), corruption);
    }
}

TEST_F(FileSecretStoreTest, EarlierCorruptCopiesAreNeverOverwritten) {
    QDir().mkpath(QString::fromStdString(folder()));
    FileSecretStore store(path());
    for (const std::string damage : {"first damage", "second damage", "third damage"}) {
        writeFile(path(), damage);
        ASSERT_EQ(store.add(kService, kAccount, "sk-new"), kSecretStatusSuccess);
    }
    EXPECT_EQ(fileContent(path() + ".corrupt"), "first damage");
    EXPECT_EQ(fileContent(path() + ".corrupt.2"), "second damage");
    EXPECT_EQ(fileContent(path() + ".corrupt.3"), "third damage");
    EXPECT_EQ(store.copy(kService, kAccount).data, "sk-new");
}

TEST_F(FileSecretStoreTest, SomethingOtherThanAFileUnderItsNameNeitherHangsNorIsLost) {
    QDir().mkpath(QString::fromStdString(folder()));
    ASSERT_EQ(::mkfifo(path().c_str(), 0600), 0);
    FileSecretStore store(path());

    // A FIFO with no writer would block a plain open for ever.
    EXPECT_EQ(store.copy(kService, kAccount).status, kSecretStatusItemNotFound);
    EXPECT_EQ(store.add(kService, kAccount, "sk-new"), kSecretStatusSuccess);
    EXPECT_EQ(store.copy(kService, kAccount).data, "sk-new");
    struct stat aside {};
    ASSERT_EQ(::lstat((path() + ".corrupt").c_str(), &aside), 0);
    EXPECT_TRUE(S_ISFIFO(aside.st_mode));
}

TEST_F(FileSecretStoreTest, AnUnwritableLocationFailsWithoutTouchingAnything) {
    std::string blocker = m_root.filePath(QStringLiteral("plain-file")).toStdString();
    writeFile(blocker, "in the way");
    FileSecretStore store(blocker + "/quorvane/secrets");

    EXPECT_EQ(store.add(kService, kAccount, "sk-new"), kSecretStatusIO);
    EXPECT_EQ(store.copy(kService, kAccount).status, kSecretStatusItemNotFound);
    EXPECT_EQ(fileContent(blocker), "in the way");
}

TEST_F(FileSecretStoreTest, TheDefaultPathFollowsXdgConfigHomeThenHome) {
    std::string savedConfig = std::getenv("XDG_CONFIG_HOME") ? std::getenv("XDG_CONFIG_HOME") : "";
    std::string savedHome = std::getenv("HOME") ? std::getenv("HOME") : "";

    ::setenv("HOME", "/home/someone", 1);
    ::setenv("XDG_CONFIG_HOME", "/srv/config", 1);
    EXPECT_EQ(FileSecretStore::defaultPath(), "/srv/config/quorvane/secrets");
    // A relative XDG_CONFIG_HOME is invalid and ignored.
    ::setenv("XDG_CONFIG_HOME", "relative/config", 1);
    EXPECT_EQ(FileSecretStore::defaultPath(), "/home/someone/.config/quorvane/secrets");
    ::setenv("XDG_CONFIG_HOME", "", 1);
    EXPECT_EQ(FileSecretStore::defaultPath(), "/home/someone/.config/quorvane/secrets");
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(FileSecretStore::defaultPath(), "/home/someone/.config/quorvane/secrets");

    ::setenv("HOME", savedHome.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", savedConfig.c_str(), 1);
}

} // namespace
} // namespace quorvane
