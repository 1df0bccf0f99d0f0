#include "menu/KeyDialog.h"

#include <array>
#include <cstddef>

namespace quorvane {

namespace {

// The white space and line-break characters of Unicode, as UTF-8; the
// information separators U+001C..U+001F, which count too, are single bytes
// and tested by range below.
constexpr std::array<std::string_view, 25> kWhitespace = {
    "\t",           "\n",           "\v",           "\f",           "\r",           " ",
    "\xC2\x85",     // U+0085 next line
    "\xC2\xA0",     // U+00A0 no-break space
    "\xE1\x9A\x80", // U+1680 ogham space mark
    "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82", "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85",
    "\xE2\x80\x86", "\xE2\x80\x87", "\xE2\x80\x88", "\xE2\x80\x89", "\xE2\x80\x8A", // U+2000..U+200A
    "\xE2\x80\xA8",                                                                 // U+2028 line separator
    "\xE2\x80\xA9", // U+2029 paragraph separator
    "\xE2\x80\xAF", // U+202F narrow no-break space
    "\xE2\x81\x9F", // U+205F medium mathematical space
    "\xE3\x80\x80", // U+3000 ideographic space
};

std::size_t whitespacePrefix(std::string_view text) {
    for (std::string_view space : kWhitespace) {
        if (text.starts_with(space)) {
            return space.size();
        }
    }
    if (!text.empty() && (text.front() >= '\x1C' && text.front() <= '\x1F')) {
        return 1;
    }
    return 0;
}

std::size_t whitespaceSuffix(std::string_view text) {
    for (std::string_view space : kWhitespace) {
        if (text.ends_with(space)) {
            return space.size();
        }
    }
    if (!text.empty() && (text.back() >= '\x1C' && text.back() <= '\x1F')) {
        return 1;
    }
    return 0;
}

} // namespace

AlertRequest KeyDialog::request(const std::string& storedKey) {
    AlertRequest request;
    request.messageText = std::string(kMessage);
    request.informativeText = std::string(kInformative);
    request.buttons = {"Save", "Cancel"};
    request.fieldSize = kFieldSize;
    request.placeholder = std::string(kPlaceholder);
    request.initialText = storedKey;
    return request;
}

std::optional<std::string> KeyDialog::acceptedKey(const AlertResponse& response) {
    if (response.button != kAlertFirstButtonReturn) {
        return std::nullopt;
    }
    return acceptedText(response.fieldText);
}

std::optional<std::string> KeyDialog::acceptedText(std::string_view text) {
    std::string key = trimmed(text);
    if (key.empty()) {
        return std::nullopt;
    }
    return key;
}

std::string KeyDialog::trimmed(std::string_view text) {
    while (std::size_t n = whitespacePrefix(text)) {
        text.remove_prefix(n);
    }
    while (std::size_t n = whitespaceSuffix(text)) {
        text.remove_suffix(n);
    }
    return std::string(text);
}

} // namespace quorvane
