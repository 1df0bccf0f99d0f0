// The key dialog of the command line: answers Save with a key the user already gave, or Cancel.
#pragma once

#include "platform/Alert.h"

#include <optional>
#include <string>

namespace quorvane {

// The command line asks for the key before the program does (from standard
// input or a prompt), so the dialog's answer is known in advance; the rules
// for what is saved stay the program's own.
class CommandLineAlert : public Alert {
public:
    // Nothing answers Cancel.
    explicit CommandLineAlert(std::optional<std::string> keyText = std::nullopt);

    // Save with the text, once; every later request is cancelled, so one
    // typed key is never saved twice.
    AlertResponse runModal(const AlertRequest& request) override;

    int requests() const { return m_requests; }

private:
    std::optional<std::string> m_keyText;
    int m_requests = 0;
};

} // namespace quorvane
