#include "services/SecretStoreSelector.h"

#include "services/FileSecretStore.h"
#include "services/MigratingSecretStore.h"
#include "services/SecretServiceStore.h"

#include <algorithm>
#include <condition_variable>
#include <cstdlib>
#include <gio/gio.h>
#include <limits>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <thread>

namespace quorvane {

namespace {

struct ObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T> using GObjectPtr = std::unique_ptr<T, ObjectUnref>;

struct VariantUnref {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};

// Where GIO itself would look, short of autolaunching a bus: a probe that
// starts a session bus would outlive its question.
std::optional<std::string> sessionBusAddress() {
    const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address != nullptr && address[0] != '\0') {
        return std::string(address);
    }
    const char* runtimeDir = std::getenv("XDG_RUNTIME_DIR");
    if (runtimeDir == nullptr || runtimeDir[0] == '\0') {
        return std::nullopt;
    }
    std::string socketPath = std::string(runtimeDir) + "/bus";
    struct stat info {};
    if (::stat(socketPath.c_str(), &info) != 0 || !S_ISSOCK(info.st_mode)) {
        return std::nullopt;
    }
    gchar* escaped = g_dbus_address_escape_value(socketPath.c_str());
    std::string result = std::string("unix:path=") + escaped;
    g_free(escaped);
    return result;
}

// Blocking calls with a cancellable: a second thread cancels them when the
// deadline passes, which also covers the connection handshake, the one step
// GDBus gives no time-out of its own.
bool pingSecretService(const std::string& address, GCancellable* cancellable, int timeoutMs) {
    GError* error = nullptr;
    GObjectPtr<GDBusConnection> connection(g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, cancellable, &error));
    if (!connection) {
        g_clear_error(&error);
        return false;
    }
    // Every D-Bus peer answers Ping, and the bus starts an activatable service
    // to deliver it; a bus with no such service answers ServiceUnknown at once.
    std::unique_ptr<GVariant, VariantUnref> reply(g_dbus_connection_call_sync(
        connection.get(), "org.freedesktop.secrets", "/org/freedesktop/secrets", "org.freedesktop.DBus.Peer",
        "Ping", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, timeoutMs, cancellable, &error));
    g_clear_error(&error);
    // Dropping the last reference stops the connection's worker and closes it.
    return reply != nullptr;
}

} // namespace

// A key saved while the service did not answer is in the file; it is found
// there and moves into the service.
std::unique_ptr<SecretStore> SecretStoreSelector::withFileBehind(std::unique_ptr<SecretStore> service) {
    return std::make_unique<MigratingSecretStore>(
        std::move(service), std::make_unique<FileSecretStore>(FileSecretStore::defaultPath()));
}

SecretStoreSelector::SecretStoreSelector(std::ostream& announcements, std::chrono::milliseconds probeDeadline)
    : m_announcements(announcements)
    , m_probeDeadline(probeDeadline) {}

std::unique_ptr<SecretStore> SecretStoreSelector::select() {
    const char* forced = std::getenv("QUORVANE_SECRET_STORE");
    std::string_view choice = forced != nullptr ? forced : "";
    if (choice == "secret-service") {
        return withFileBehind(std::make_unique<SecretServiceStore>());
    }
    if (choice == "file") {
        return std::make_unique<FileSecretStore>(FileSecretStore::defaultPath());
    }
    if (secretServiceAnswers()) {
        return withFileBehind(std::make_unique<SecretServiceStore>());
    }
    auto store = std::make_unique<FileSecretStore>(FileSecretStore::defaultPath());
    if (!m_announced) {
        m_announced = true;
        m_announcements << "Quorvane: no Secret Service answered; keeping the API key in "
                        << store->filePath() << ", readable by you alone.\n"
                        << std::flush;
    }
    return store;
}

bool SecretStoreSelector::secretServiceAnswers() const {
    std::optional<std::string> address = sessionBusAddress();
    if (!address) {
        return false;
    }

    GObjectPtr<GCancellable> cancellable(g_cancellable_new());
    std::mutex mutex;
    std::condition_variable finishedChanged;
    bool finished = false;
    std::thread watchdog([&] {
        std::unique_lock<std::mutex> lock(mutex);
        if (!finishedChanged.wait_for(lock, m_probeDeadline, [&] { return finished; })) {
            g_cancellable_cancel(cancellable.get());
        }
    });

    auto timeoutMs = static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(
        m_probeDeadline.count(), 1, std::numeric_limits<int>::max()));
    bool answers = pingSecretService(*address, cancellable.get(), timeoutMs);

    {
        std::lock_guard<std::mutex> lock(mutex);
        finished = true;
    }
    finishedChanged.notify_one();
    watchdog.join();
    return answers;
}

} // namespace quorvane
