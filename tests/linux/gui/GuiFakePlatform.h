// The project's fakes with the Qt status item standing in for the recording one.
#pragma once

#include "fakes/FakePlatform.h"
#include "gui/QtStatusItem.h"
#include "platform/Platform.h"

namespace quorvane {

struct GuiFakePlatform {
    FakePlatform fake;
    QtStatusItem statusItem{fake.formatter, fake.clock};

    Platform platform() { return platformWith(fake.desktop); }
    Platform platformWith(Alert& alert) {
        return Platform{statusItem, fake.settings,  fake.secrets,       fake.http,
                        fake.clock, fake.formatter, fake.textSegmenter, fake.timers,
                        alert,      fake.desktop,   fake.desktop,       fake.desktop};
    }
};

} // namespace quorvane
