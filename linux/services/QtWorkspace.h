// Opens web addresses with the desktop's default handler through QDesktopServices.
#pragma once

#include "platform/Workspace.h"

#include <string>

namespace quorvane {

// Needs a QGuiApplication. Hands the address to xdg-open (or the portal),
// which starts the browser and returns; whether it succeeded is not known
// here and not reported.
class QtWorkspace : public Workspace {
public:
    // The address is parsed strictly: one that is not a valid URL is not
    // opened at all, rather than opened as Qt's guess of what was meant.
    void openUrl(const std::string& url) override;
};

} // namespace quorvane
