#include "services/SecretStoreSelector.h"

#include "services/FileSecretStore.h"
#include "services/MigratingSecretStore.h"
#include "services/SecretServiceStore.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quorvane {
namespace {

using namespace std::chrono_literals;

// A socket that accepts connections (the kernel does, into the backlog) and
// never says a word: a session bus that hangs.
class SilentSocket {
public:
    explicit SilentSocket(const std::string& path)
        : m_fd(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(::bind(m_fd, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(::listen(m_fd, 8), 0);
    }
    ~SilentSocket() { ::close(m_fd); }
    // Whether anyone connected since the last call: a connection waits in
    // the backlog even after its client gave up.
    bool wasConnectedTo() {
        bool connected = false;
        for (int connection; (connection = ::accept(m_fd, nullptr, nullptr)) >= 0; connected = true) {
            ::close(connection);
        }
        return connected;
    }

private:
    int m_fd;
};

// The main program's environment has no session bus; the variables set here
// are put back as they were after each test.
class SecretStoreSelectorTest : public ::testing::Test {
protected:
    void SetUp() override { qputenv("XDG_RUNTIME_DIR", m_folder.path().toLocal8Bit()); }
    void TearDown() override {
        qputenv("XDG_RUNTIME_DIR", m_runtime);
        qunsetenv("QUORVANE_SECRET_STORE");
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    }
    std::string expectedFile() const {
        return qEnvironmentVariable("XDG_CONFIG_HOME").toStdString() + "/quorvane/secrets";
    }

    QByteArray m_runtime = qgetenv("XDG_RUNTIME_DIR");
    QTemporaryDir m_folder;
    std::string m_hungPath = m_folder.filePath(QStringLiteral("bus")).toStdString();
    std::ostringstream m_announcements;
};

TEST_F(SecretStoreSelectorTest, TheEnvironmentForcesEitherStoreWithoutAProbe) {
    SilentSocket hung(m_hungPath);
    qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString("unix:path=" + m_hungPath));
    SecretStoreSelector selector(m_announcements, 300ms);

    qputenv("QUORVANE_SECRET_STORE", "file");
    auto file = selector.select();
    qputenv("QUORVANE_SECRET_STORE", "secret-service");
    auto secretService = selector.select();

    ASSERT_NE(dynamic_cast<FileSecretStore*>(file.get()), nullptr);
    EXPECT_EQ(dynamic_cast<FileSecretStore*>(file.get())->filePath(), expectedFile());
    EXPECT_NE(dynamic_cast<MigratingSecretStore*>(secretService.get()), nullptr);
    EXPECT_EQ(m_announcements.str(), "");
    EXPECT_FALSE(hung.wasConnectedTo());
}

// Other values of the variable leave the choice to the probe; a bus that
// cannot answer, hung or absent, is no Secret Service.
TEST_F(SecretStoreSelectorTest, WithoutAnAnsweringBusTheFileIsUsedAndAnnouncedOnce) {
    SilentSocket hung(m_hungPath);
    const std::pair<const char*, std::string> cases[] = {
        {"keyring", ""},
        {"FILE", "unix:path=" + m_folder.filePath(QStringLiteral("no-such-socket")).toStdString()},
        {"secret-service ", "not an address"},
        {"", "unix:path=" + m_hungPath},
    };
    for (const auto& [choice, address] : cases) {
        SCOPED_TRACE(address);
        qputenv("QUORVANE_SECRET_STORE", choice);
        // Without an address the runtime folder's "bus" socket is tried.
        qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString(address));
        std::ostringstream announcements;
        SecretStoreSelector selector(announcements, 300ms);
        auto started = std::chrono::steady_clock::now();
        auto first = selector.select();
        auto second = selector.select();
        // Far below the 25 s that D-Bus calls wait by default.
        EXPECT_LT(std::chrono::steady_clock::now() - started, 10s);
        ASSERT_NE(dynamic_cast<FileSecretStore*>(first.get()), nullptr);
        EXPECT_EQ(dynamic_cast<FileSecretStore*>(first.get())->filePath(), expectedFile());
        EXPECT_NE(dynamic_cast<FileSecretStore*>(second.get()), nullptr);
        EXPECT_EQ(announcements.str(), "Quorvane: no Secret Service answered; keeping the API key in " +
                                           expectedFile() + ", readable by you alone.\n");
        EXPECT_EQ(hung.wasConnectedTo(), address.empty() || address == "unix:path=" + m_hungPath);
    }
}

} // namespace
} // namespace quorvane
