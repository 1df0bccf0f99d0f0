#include "services/FileSecretStore.h"

#include "services/SecretStatus.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <sys/stat.h>

namespace quorvane {
namespace {

const std::string kService = "Quorvane";
const std::string kAccount = "DeepSeekAPIKey";

std::optional<std::string> fileContent(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return in ? std::optional<std::string>(std::string(std::istreambuf_iterator<char>(in), {}))
              : std::nullopt;
}

void writeFile(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
}

mode_t modeOf(const std::string& path) {
    struct stat info {};
    ::stat(path.c_str(), &info);
    return info.st_mode & 07777;
}

class FileSecretStoreTest : public ::testing::Test {
protected:
    std::string folder() const { return m_root.filePath(QStringLiteral("config/quorvane")).toStdString(); }
    std::string path() const { return folder() + "/secrets"; }
    QStringList entries() const {
        return QDir(QString::fromStdString(folder()))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_root;
};

TEST_F(FileSecretStoreTest, TheFileIsTheUsersAloneWhateverTheUmask) {
    for (mode_t umaskValue : {mode_t{0}, mode_t{0277}}) {
        std::string base = m_root.filePath(QStringLiteral("umask%1").arg(umaskValue)).toStdString();
        mode_t previous = ::umask(umaskValue);
        FileSecretStore store(base + "/config/quorvane/secrets");
        std::int32_t added = store.add(kService, kAccount, "sk-one");
        std::int32_t updated = store.update(kService, kAccount, "sk-two");
        ::umask(previous);

        EXPECT_EQ(added, kSecretStatusSuccess) << umaskValue;
        EXPECT_EQ(updated, kSecretStatusSuccess) << umaskValue;
        EXPECT_EQ(modeOf(base + "/config/quorvane/secrets"), 0600u) << umaskValue;
        EXPECT_EQ(modeOf(base + "/config/quorvane"), 0700u) << umaskValue;
        EXPECT_EQ(modeOf(base + "/config"), 0700u) << umaskValue;
    }
}

TEST_F(FileSecretStoreTest, ValuesOfAnyBytesRoundTripAndItemsAreKeptApart) {
    std::string everyByte;
    for (int b = 255; b >= 0; --b) {
        everyByte.push_back(static_cast<char>(b));
    }
    for (const std::string& value : {std::string(), std::string("nul\0inside", 10), std::string("3:abc,\n4:"),
                                     everyByte, std::string(100000, 'k')}) {
        ASSERT_EQ(FileSecretStore(path()).add(kService, kAccount, value), kSecretStatusSuccess);
        FileSecretStore reopened(path());
        SecretCopyResult copied = reopened.copy(kService, kAccount);
        EXPECT_EQ(copied.status, kSecretStatusSuccess);
        EXPECT_EQ(copied.data, value);
        ASSERT_EQ(reopened.remove(kService, kAccount), kSecretStatusSuccess);
    }

    FileSecretStore store(path());
    EXPECT_EQ(store.update(kService, kAccount, "sk-new"), kSecretStatusItemNotFound);
    EXPECT_EQ(entries(), QStringList()) << "update never creates";
    EXPECT_EQ(store.remove(kService, kAccount), kSecretStatusItemNotFound);
    ASSERT_EQ(store.add(kService, kAccount, "sk-main"), kSecretStatusSuccess);
    EXPECT_EQ(store.add(kService, kAccount, "sk-again"), kSecretStatusDuplicateItem);
    ASSERT_EQ(store.add(kService, "Other", "sk-other"), kSecretStatusSuccess);
    ASSERT_EQ(store.add("1:a,", "\n", "odd names"), kSecretStatusSuccess);
    ASSERT_EQ(store.update(kService, "Other", "sk-other-2"), kSecretStatusSuccess);
    ASSERT_EQ(store.remove(kService, kAccount), kSecretStatusSuccess);
    EXPECT_EQ(store.copy(kService, kAccount).status, kSecretStatusItemNotFound);
    EXPECT_EQ(store.copy("Quorvane ", "Other").status, kSecretStatusItemNotFound);
    EXPECT_EQ(store.remove(kService, "Missing"), kSecretStatusItemNotFound)
        << "the service alone is no match";
    EXPECT_EQ(fileContent(path()), "quorvane-secrets 1\n"
                                   "8:Quorvane,5:Other,10:sk-other-2,\n"
                                   "4:1:a,,1:\n,9:odd names,\n");
    ASSERT_EQ(store.remove(kService, "Other"), kSecretStatusSuccess);
    ASSERT_EQ(store.remove("1:a,", "\n"), kSecretStatusSuccess);
    // The last item gone, no file is left holding anything.
    EXPECT_EQ(entries(), QStringList());
}

// Each damaged file reads as empty, is left alone until an add, and is then
// moved aside under a name no earlier copy holds.
TEST_F(FileSecretStoreTest, ACorruptFileReadsAsEmptyAndIsMovedAsideBeforeAnAdd) {
    const std::string corruptions[] = {
        "not a secrets file",
        "quorvane-secrets 2\n8:Quorvane,14:DeepSeekAPIKey,6:sk-old,\n",
        "quorvane-secrets 1\n8:Quorvane,14:DeepSeekAPIKey,60:sk-old,\n",
        "quorvane-secrets 1\n08:Quorvane,14:DeepSeekAPIKey,6:sk-old,\n",
        "quorvane-secrets 1\n8:Quorvane,14:DeepSeekAPIKey,6:sk-old,\ntrailing",
        "quorvane-secrets "
        "1\n8:Quorvane,14:DeepSeekAPIKey,6:sk-old,\n8:Quorvane,14:DeepSeekAPIKey,6:sk-two,\n",
        std::string("\0\0\0\0", 4),
    };
    QDir().mkpath(QString::fromStdString(folder()));
    FileSecretStore store(path());
    int copies = 0;
    for (const std::string& corruption : corruptions) {
        writeFile(path(), corruption);
        EXPECT_EQ(store.copy(kService, kAccount).status, kSecretStatusItemNotFound);
        EXPECT_EQ(store.update(kService, kAccount, "sk-new"), kSecretStatusItemNotFound);
        EXPECT_EQ(store.remove(kService, kAccount), kSecretStatusItemNotFound);
        EXPECT_EQ(fileContent(path()), corruption);

        EXPECT_EQ(store.add(kService, kAccount, "sk-new"), kSecretStatusSuccess);
        EXPECT_EQ(store.copy(kService, kAccount).data, "sk-new");
        ++copies;
        EXPECT_EQ(fileContent(path() + ".corrupt" + (copies == 1 ? "" : "." + std::to_string(copies))),
                  corruption);
    }

    // A FIFO with no writer would block a plain open for ever.
    std::remove(path().c_str());
    ASSERT_EQ(::mkfifo(path().c_str(), 0600), 0);
    EXPECT_EQ(store.copy(kService, kAccount).status, kSecretStatusItemNotFound);
    EXPECT_EQ(store.add(kService, kAccount, "sk-fifo"), kSecretStatusSuccess);
    EXPECT_EQ(store.copy(kService, kAccount).data, "sk-fifo");
    struct stat aside {};
    ASSERT_EQ(::lstat((path() + ".corrupt." + std::to_string(copies + 1)).c_str(), &aside), 0);
    EXPECT_TRUE(S_ISFIFO(aside.st_mode));
}

// The only path through a plain file: reading it must say no key, not fail.
TEST_F(FileSecretStoreTest, AnUnwritableLocationFailsWithoutTouchingAnything) {
    std::string blocker = m_root.filePath(QStringLiteral("plain-file")).toStdString();
    writeFile(blocker, "in the way");
    FileSecretStore store(blocker + "/quorvane/secrets");
    EXPECT_EQ(store.add(kService, kAccount, "sk-new"), kSecretStatusIO);
    EXPECT_EQ(store.copy(kService, kAccount).status, kSecretStatusItemNotFound);
    EXPECT_EQ(fileContent(blocker), "in the way");
}

TEST_F(FileSecretStoreTest, TheDefaultPathFollowsXdgConfigHomeThenHome) {
    const std::string savedConfig = qEnvironmentVariable("XDG_CONFIG_HOME").toStdString();
    const std::string savedHome = qEnvironmentVariable("HOME").toStdString();
    ::setenv("HOME", "/home/someone", 1);
    ::setenv("XDG_CONFIG_HOME", "/srv/config", 1);
    EXPECT_EQ(FileSecretStore::defaultPath(), "/srv/config/quorvane/secrets");
    // A relative XDG_CONFIG_HOME is invalid and ignored.
    ::setenv("XDG_CONFIG_HOME", "relative/config", 1);
    EXPECT_EQ(FileSecretStore::defaultPath(), "/home/someone/.config/quorvane/secrets");
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(FileSecretStore::defaultPath(), "/home/someone/.config/quorvane/secrets");
    ::setenv("HOME", savedHome.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", savedConfig.c_str(), 1);
}

} // namespace
} // namespace quorvane
