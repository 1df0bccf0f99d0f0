// The demo's world: the simulated account behind its local server, with in-memory settings and key.
#pragma once

#include "demo/DemoAccount.h"
#include "demo/DemoSecretStore.h"
#include "demo/DemoServer.h"
#include "demo/DemoSettingsStore.h"
#include "platform/Clock.h"
#include "platform/Formatter.h"
#include "values/Timestamp.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// The stores start as a user's would after a day of use: the key saved and a
// day of readings in the history, so the chart has a line at once. The
// server continues the same account, so the first live reading follows on
// from the last stored one. Nothing here touches the user's files or keyring.
class DemoEnvironment {
public:
    static constexpr std::string_view kDemoKey = "sk-demo";
    static constexpr std::uint32_t kDefaultSeed = 20250301;
    // Readings per currency stored before the first live one, and their spacing.
    static constexpr int kSeededReadings = 48;
    static constexpr double kSeededSpacingSeconds = 1800.0;

    // The clock and formatter outlive the environment.
    DemoEnvironment(const Clock& clock, const Formatter& formatter, std::uint32_t seed = kDefaultSeed);

    // Saves the key, writes the day of history and starts the server; false
    // when the server could not listen.
    bool start();

    SettingsStore& settings() { return m_settings; }
    SecretStore& secrets() { return m_secrets; }
    std::string apiBaseUrl() const { return m_server.baseUrl(); }

    // Baselines as a day of use would have left them: since the first stored
    // reading, and today since the first stored reading of today (none when
    // no stored reading falls on today), by the day key the program uses.
    void seedBaselines();

private:
    struct Reading {
        Timestamp time;
        std::vector<DemoAccount::Balance> balances;
    };

    void seedHistory();

    const Clock& m_clock;
    const Formatter& m_formatter;
    DemoAccount m_account;
    DemoServer m_server;
    DemoSettingsStore m_settings;
    DemoSecretStore m_secrets;
    std::vector<Reading> m_seeded;
};

} // namespace quorvane
