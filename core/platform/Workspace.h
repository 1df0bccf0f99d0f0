// The desktop's default handlers: opens a web address in the user's browser.
#pragma once

#include <string>

namespace quorvane {

class Workspace {
public:
    virtual ~Workspace() = default;

    // The outcome is not reported: the program never checks it.
    virtual void openUrl(const std::string& url) = 0;
};

} // namespace quorvane
