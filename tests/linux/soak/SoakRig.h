// Every platform service as a fake except the network, which is the real Qt client.
#pragma once

#include "app/Platform.h"
#include "fakes/FakeClock.h"
#include "fakes/ManualTimerScheduler.h"
#include "fakes/MemorySecretStore.h"
#include "fakes/MemorySettingsStore.h"
#include "fakes/RecordingDesktop.h"
#include "fakes/RecordingStatusItem.h"
#include "icu/IcuFormatter.h"
#include "icu/IcuTextSegmenter.h"
#include "services/QtHttpClient.h"

#include <string_view>

namespace quorvane {

struct SoakRig {
    static constexpr std::string_view kKey = "sk-soak-SECRET";
    // 2026-11-22T09:00:00Z.
    static constexpr Timestamp kStart = Timestamp::fromUnixSeconds(1795338000.0);

    RecordingStatusItem statusItem;
    MemorySettingsStore settings;
    MemorySecretStore secrets;
    QtHttpClient http;
    FakeClock clock{kStart, "UTC"};
    IcuFormatter formatter{"en_US"};
    IcuTextSegmenter textSegmenter;
    ManualTimerScheduler timers;
    RecordingDesktop desktop;

    SoakRig() { secrets.putItem("Quorvane", "DeepSeekAPIKey", std::string(kKey)); }

    Platform platform() {
        return Platform{statusItem, settings, secrets, http,    clock,   formatter, textSegmenter,
                        timers,     desktop,  desktop, desktop, desktop, &desktop};
    }
};

} // namespace quorvane
