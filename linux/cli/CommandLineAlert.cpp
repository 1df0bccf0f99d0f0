#include "cli/CommandLineAlert.h"

namespace quorvane {

CommandLineAlert::CommandLineAlert(std::optional<std::string> keyText)
    : m_keyText(std::move(keyText)) {}

AlertResponse CommandLineAlert::runModal(const AlertRequest& request) {
    ++m_requests;
    AlertResponse response;
    if (!m_keyText || request.buttons.empty()) {
        response.button = kAlertFirstButtonReturn + static_cast<int>(request.buttons.size()) - 1;
        return response;
    }
    response.button = kAlertFirstButtonReturn;
    response.fieldText = std::move(*m_keyText);
    m_keyText.reset();
    return response;
}

} // namespace quorvane
