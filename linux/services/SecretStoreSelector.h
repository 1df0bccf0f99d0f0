// Chooses where the API key lives: the Secret Service when one answers, else a private file.
#pragma once

#include "platform/SecretStore.h"

#include <chrono>
#include <memory>
#include <ostream>

namespace quorvane {

// QUORVANE_SECRET_STORE=secret-service or =file decides without asking
// anything (any other value is ignored). Otherwise the session bus is asked,
// once per select(), whether a Secret Service answers; when none does, the
// file store is used and that is announced on the given stream in one line
// naming the file, at most once for the life of the selector. The Secret
// Service always comes with the file behind it (MigratingSecretStore).
class SecretStoreSelector {
public:
    // libsecret's own calls wait up to 25 seconds for a service that does not
    // answer; the probe gives up after `probeDeadline` instead, whatever the
    // bus does (even a bus that accepts the connection and never speaks). The
    // default leaves a keyring started on demand time to come up: giving up
    // too soon would put the key in the file this time and look for it in the
    // keyring the next.
    explicit SecretStoreSelector(std::ostream& announcements,
                                 std::chrono::milliseconds probeDeadline = std::chrono::milliseconds(5000));

    std::unique_ptr<SecretStore> select();

    // True when the session bus (DBUS_SESSION_BUS_ADDRESS, or the socket
    // $XDG_RUNTIME_DIR/bus) is reachable and org.freedesktop.secrets answers
    // a ping there, starting the service first if the bus knows how to.
    bool secretServiceAnswers() const;

private:
    static std::unique_ptr<SecretStore> withFileBehind(std::unique_ptr<SecretStore> service);

    std::ostream& m_announcements;
    std::chrono::milliseconds m_probeDeadline;
    bool m_announced = false;
};

} // namespace quorvane
