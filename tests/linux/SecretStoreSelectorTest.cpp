#include "platform/SecretStoreSelector.h"

#include "platform/FileSecretStore.h"
#include "platform/SecretServiceStore.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quorvane {
namespace {

using namespace std::chrono_literals;

// Sets variables for one test and puts the previous values back after it.
class ScopedEnvironment {
public:
    ~ScopedEnvironment() {
        for (const auto& [name, value] : m_saved) {
            if (value) {
                ::setenv(name.c_str(), value->c_str(), 1);
            } else {
                ::unsetenv(name.c_str());
            }
        }
    }
    void set(const std::string& name, const std::optional<std::string>& value) {
        if (m_saved.find(name) == m_saved.end()) {
            const char* old = std::getenv(name.c_str());
            m_saved[name] = old ? std::optional<std::string>(old) : std::nullopt;
        }
        if (value) {
            ::setenv(name.c_str(), value->c_str(), 1);
        } else {
            ::unsetenv(name.c_str());
        }
    }

private:
    std::map<std::string, std::optional<std::string>> m_saved;
};

// A socket that accepts connections (the kernel does, into the backlog) and
// never says a word: a session bus that hangs.
class SilentSocket {
public:
    explicit SilentSocket(const std::string& path)
        : m_fd(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        m_listening = m_fd >= 0 && ::bind(m_fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                      ::listen(m_fd, 8) == 0;
    }
    ~SilentSocket() { ::close(m_fd); }
    bool listening() const { return m_listening; }
    // Whether anyone connected since the last call: a connection waits in
    // the backlog even after its client gave up.
    bool wasConnectedTo() {
        int connection = ::accept(m_fd, nullptr, nullptr);
        if (connection < 0) {
            return false;
        }
        ::close(connection);
        return true;
    }

private:
    int m_fd;
    bool m_listening = false;
};

class SecretStoreSelectorTest : public ::testing::Test {
protected:
    void SetUp() override {
        // No session bus unless a test gives one.
        m_environment.set("QUORVANE_SECRET_STORE", std::nullopt);
        m_environment.set("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
        m_environment.set("XDG_RUNTIME_DIR", m_folder.path().toStdString());
        m_environment.set("XDG_CONFIG_HOME", m_folder.filePath(QStringLiteral("config")).toStdString());
    }
    std::string expectedFile() const {
        return m_folder.filePath(QStringLiteral("config/quorvane/secrets")).toStdString();
    }

    QTemporaryDir m_folder;
    ScopedEnvironment m_environment;
    std::ostringstream m_announcements;
};

TEST_F(SecretStoreSelectorTest, WithoutASessionBusTheFileIsUsedAndAnnouncedOnce) {
    SecretStoreSelector selector(m_announcements);
    EXPECT_FALSE(selector.secretServiceAnswers());

    auto first = selector.select();
    auto second = selector.select();

    auto* file = dynamic_cast<FileSecretStore*>(first.get());
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->filePath(), expectedFile());
    EXPECT_NE(dynamic_cast<FileSecretStore*>(second.get()), nullptr);
    EXPECT_EQ(m_announcements.str(), "Quorvane: no Secret Service answered; keeping the API key in " +
                                         expectedFile() + ", readable by you alone.\n");
}

TEST_F(SecretStoreSelectorTest, TheEnvironmentForcesEitherStoreWithoutAProbe) {
    // Tells whether a probe was made.
    std::string socketPath = m_folder.filePath(QStringLiteral("hung-bus")).toStdString();
    SilentSocket hung(socketPath);
    ASSERT_TRUE(hung.listening());
    m_environment.set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + socketPath);
    SecretStoreSelector selector(m_announcements, 300ms);

    m_environment.set("QUORVANE_SECRET_STORE", "file");
    auto file = selector.select();
    m_environment.set("QUORVANE_SECRET_STORE", "secret-service");
    auto secretService = selector.select();

    ASSERT_NE(dynamic_cast<FileSecretStore*>(file.get()), nullptr);
    EXPECT_EQ(dynamic_cast<FileSecretStore*>(file.get())->filePath(), expectedFile());
    EXPECT_NE(dynamic_cast<SecretServiceStore*>(secretService.get()), nullptr);
    EXPECT_EQ(m_announcements.str(), "");
    EXPECT_FALSE(hung.wasConnectedTo());
}

TEST_F(SecretStoreSelectorTest, OtherValuesOfTheVariableLeaveTheChoiceToTheProbe) {
    for (const char* value : {"", "keyring", "FILE", "secret-service "}) {
        m_environment.set("QUORVANE_SECRET_STORE", std::string(value));
        SecretStoreSelector selector(m_announcements);
        EXPECT_NE(dynamic_cast<FileSecretStore*>(selector.select().get()), nullptr) << value;
    }
}

TEST_F(SecretStoreSelectorTest, BusesThatCannotAnswerAreNoSecretService) {
    std::string socketPath = m_folder.filePath(QStringLiteral("hung-bus")).toStdString();
    SilentSocket hung(socketPath);
    ASSERT_TRUE(hung.listening());
    const std::string addresses[] = {
        "unix:path=" + m_folder.filePath(QStringLiteral("no-such-socket")).toStdString(),
        "tcp:host=127.0.0.1,port=1",
        "not an address",
        "unix:path=" + socketPath,
    };
    for (const std::string& address : addresses) {
        m_environment.set("DBUS_SESSION_BUS_ADDRESS", address);
        SecretStoreSelector selector(m_announcements, 300ms);
        auto started = std::chrono::steady_clock::now();
        EXPECT_FALSE(selector.secretServiceAnswers()) << address;
        // Far below the 25 s that D-Bus calls wait by default.
        EXPECT_LT(std::chrono::steady_clock::now() - started, 10s) << address;
    }
    EXPECT_TRUE(hung.wasConnectedTo());
}

TEST_F(SecretStoreSelectorTest, TheRuntimeFolderBusIsUsedWhenNoAddressIsSet) {
    std::string socketPath = m_folder.filePath(QStringLiteral("bus")).toStdString();
    SilentSocket hung(socketPath);
    ASSERT_TRUE(hung.listening());
    SecretStoreSelector selector(m_announcements, 300ms);

    EXPECT_FALSE(selector.secretServiceAnswers());
    EXPECT_TRUE(hung.wasConnectedTo());
}

} // namespace
} // namespace quorvane
