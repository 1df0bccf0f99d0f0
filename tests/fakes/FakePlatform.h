// Every platform service as a fake, with the real ICU formatting pinned to en_US.
#pragma once

#include "app/Platform.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeHttpClient.h"
#include "fakes/ManualTimerScheduler.h"
#include "fakes/MemorySecretStore.h"
#include "fakes/MemorySettingsStore.h"
#include "fakes/RecordingDesktop.h"
#include "fakes/RecordingStatusItem.h"
#include "icu/IcuFormatter.h"
#include "icu/IcuTextSegmenter.h"

namespace quorvane {

struct FakePlatform {
    // 2026-11-22T09:00:00Z.
    static constexpr Timestamp kStart = Timestamp::fromUnixSeconds(1795338000.0);

    RecordingStatusItem statusItem;
    MemorySettingsStore settings;
    MemorySecretStore secrets;
    FakeHttpClient http;
    FakeClock clock{kStart, "UTC"};
    IcuFormatter formatter{"en_US"};
    IcuTextSegmenter textSegmenter;
    ManualTimerScheduler timers;
    RecordingDesktop desktop;

    Platform platform() {
        return Platform{statusItem, settings, secrets, http,    clock,   formatter, textSegmenter,
                        timers,     desktop,  desktop, desktop, desktop, &desktop};
    }

    void storeKey(const std::string& key) { secrets.putItem("Quorvane", "DeepSeekAPIKey", key); }
};

} // namespace quorvane
