// The desktop app: the delegate over the Qt platform, with its status item and menu.
#pragma once

#include "app/AppDelegate.h"
#include "gui/QtAlert.h"
#include "gui/QtStatusItem.h"
#include "services/LinuxServices.h"
#include "services/QtApplication.h"
#include "services/QtPasteboard.h"
#include "services/QtWorkspace.h"
#include "tray/FreedesktopNotifier.h"

#include <memory>

namespace quorvane {

// Lives for the whole process, as the delegate does: nothing is torn down
// before the event loop returns, and nothing is saved then, because every
// value is written the moment it changes.
class DesktopApp {
public:
    // Needs a QApplication. The services and stores outlive the app.
    DesktopApp(LinuxServices& services, const SessionStores& stores);
    DesktopApp(const DesktopApp&) = delete;
    DesktopApp& operator=(const DesktopApp&) = delete;

    // Launches, then runs the event loop until the user quits.
    int run();

private:
    QtAlert m_alert;
    QtPasteboard m_pasteboard;
    QtWorkspace m_workspace;
    QtApplication m_application;
    QtStatusItem m_statusItem;
    FreedesktopNotifier m_notifier;
    std::unique_ptr<AppDelegate> m_delegate;
};

} // namespace quorvane
