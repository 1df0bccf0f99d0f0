// The application object and the browser of a command run from a terminal, which has neither.
#pragma once

#include "platform/Application.h"
#include "platform/Workspace.h"

#include <ostream>

namespace quorvane {

// Nothing of a command needs a window brought forward, and a command that
// would open a web page prints its address for the user to open instead.
class TerminalDesktop : public Application, public Workspace {
public:
    explicit TerminalDesktop(std::ostream& out);

    void setAccessoryPolicy() override {}
    void activateIgnoringOtherApps() override {}
    // Leaves the event loop, should one be running.
    void terminate() override;
    void openUrl(const std::string& url) override;

private:
    std::ostream& m_out;
};

} // namespace quorvane
