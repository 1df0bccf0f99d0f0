// The shared NSApplication: activation policy, bringing to the front, termination.
#pragma once

#include "platform/Application.h"

namespace quorvane {

class MacApplication : public Application {
public:
    // The accessory policy: no Dock icon and no menu bar of the app's own.
    void setAccessoryPolicy() override;
    // An accessory app is seldom active; its dialog would open behind the frontmost window without this.
    void activateIgnoringOtherApps() override;
    // Asks the application to terminate, with no sender; the process ends there.
    void terminate() override;
};

} // namespace quorvane
