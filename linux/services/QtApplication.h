// The application object on Qt: bringing the program forward and quitting it.
#pragma once

#include "platform/Application.h"

namespace quorvane {

// Needs a QGuiApplication (a QApplication will do).
class QtApplication : public Application {
public:
    // Nothing to do: a Linux desktop gives a program a taskbar entry or a dock
    // icon only for its visible top-level windows, and the program shows none
    // but its menu-bar strip and tray icon, which the shell marks as such.
    void setAccessoryPolicy() override;
    // Raises the window that has the focus, else the first visible top-level
    // window that is not a menu or a tooltip, and asks the window manager to
    // activate it (it may flash the entry instead, by its focus-stealing
    // rules). Without a visible window there is nothing to bring forward.
    void activateIgnoringOtherApps() override;
    // Leaves the event loop once the current event returns, as a Quit
    // command does; it does nothing before the event loop runs.
    void terminate() override;
};

} // namespace quorvane
