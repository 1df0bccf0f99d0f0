// UTF-8 validity, the test a byte buffer must pass before it is shown or used as text.
#pragma once

#include <string_view>

namespace quorvane {

// Strict: no overlong forms, no surrogates, nothing above U+10FFFF, no
// truncated sequences.
bool isValidUtf8(std::string_view bytes);

} // namespace quorvane
