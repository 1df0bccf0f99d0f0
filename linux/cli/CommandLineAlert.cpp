#include "cli/CommandLineAlert.h"

namespace quorvane {

AlertResponse CommandLineAlert::runModal(const AlertRequest& request) {
    AlertResponse response;
    response.button = kAlertFirstButtonReturn + static_cast<int>(request.buttons.size()) - 1;
    return response;
}

} // namespace quorvane
