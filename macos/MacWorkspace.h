// The shared workspace: opens a web address in the user's default browser.
#pragma once

#include "platform/Workspace.h"

#include <string>

namespace quorvane {

// An address that is not a URL opens nothing, and says nothing, like any other failure to open.
class MacWorkspace : public Workspace {
public:
    void openUrl(const std::string& url) override;
};

} // namespace quorvane
