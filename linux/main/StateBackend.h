// Where this run keeps its settings and key and which server it asks: the user's own, or the demo's.
#pragma once

#include "demo/DemoEnvironment.h"
#include "services/SessionStores.h"

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace quorvane {

class StateBackend {
public:
    // Replaces the provider's address, for a private or test server; never shown.
    static constexpr std::string_view kApiBaseUrlVariable = "QUORVANE_API_BASE_URL";

    // The user's settings file, the secret store this desktop offers (said on
    // `announcements` when it is the file), and the provider's API or the
    // address in QUORVANE_API_BASE_URL. Nothing, with `error` set, when that
    // address is not usable.
    static std::unique_ptr<StateBackend> forUser(std::ostream& announcements, std::string& error);
    // The simulated account, its server started; nothing when it cannot listen.
    static std::unique_ptr<StateBackend> forDemo(const Clock& clock, const Formatter& formatter,
                                                 std::string& error);

    // An http or https address with a host and no query, fragment or user
    // name; nothing when the variable is unset or empty, `error` when it is
    // set to anything else.
    static std::optional<std::string> apiBaseUrlFromEnvironment(std::string& error);

    SessionStores stores();

private:
    StateBackend() = default;

    std::unique_ptr<SettingsStore> m_userSettings;
    std::unique_ptr<SecretStore> m_userSecrets;
    std::unique_ptr<DemoEnvironment> m_demo;
    std::string m_apiBaseUrl;
};

} // namespace quorvane
