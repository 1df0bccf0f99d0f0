// The application object: activation policy, bringing to front, termination.
#pragma once

namespace quorvane {

class Application {
public:
    virtual ~Application() = default;

    // No Dock icon, no application menu, no taskbar entry.
    virtual void setAccessoryPolicy() = 0;
    virtual void activateIgnoringOtherApps() = 0;
    virtual void terminate() = 0;
};

} // namespace quorvane
