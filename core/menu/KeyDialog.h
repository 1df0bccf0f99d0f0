// The API key dialog's texts and buttons, and which answers change the stored key.
#pragma once

#include "platform/Alert.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

class KeyDialog {
public:
    static constexpr std::string_view kMessage = "DeepSeek API Key";
    static constexpr std::string_view kInformative =
        "Paste your DeepSeek API key. It will be stored in macOS Keychain.";
    static constexpr std::string_view kPlaceholder = "sk-...";
    static constexpr Size kFieldSize{420.0, 24.0};

    // Save first (the default), then Cancel; the field starts with the stored key.
    static AlertRequest request(const std::string& storedKey);

    // The key to store: Save with text left after trimming white space and
    // line breaks at both ends. Cancel, any other way out, and a blank field
    // change nothing.
    static std::optional<std::string> acceptedKey(const AlertResponse& response);
    // The same rule for text typed anywhere else (the command line's prompt).
    static std::optional<std::string> acceptedText(std::string_view text);

    // White space and line breaks (Unicode's, not only ASCII) removed at both
    // ends; characters inside stay.
    static std::string trimmed(std::string_view text);
};

} // namespace quorvane
