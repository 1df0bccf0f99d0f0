// Where a run of the program keeps its state and which server it asks: the user's own, or the demo's.
#pragma once

#include "platform/SecretStore.h"
#include "platform/SettingsStore.h"

#include <functional>
#include <string>

namespace quorvane {

struct SessionStores {
    SettingsStore& settings;
    SecretStore& secrets;
    // Never shown: it may be a private test server's.
    std::string apiBaseUrl;
    // Runs once the delegate exists, before it launches or performs anything.
    std::function<void()> prepare;
};

} // namespace quorvane
