// UTF-8 validity, the test a byte buffer must pass before it is shown or used as text.
#pragma once

#include <string>
#include <string_view>

namespace quorvane {

// Strict: no overlong forms, no surrogates, nothing above U+10FFFF, no
// truncated sequences.
bool isValidUtf8(std::string_view bytes);

// The bytes without a sequence cut short at their end, as a buffer cut at a
// byte limit may hold; whatever comes before is left as it is.
std::string_view withoutTruncatedTail(std::string_view bytes);

// A code point (at most U+10FFFF, not a surrogate) appended in UTF-8.
void appendUtf8(std::string& out, char32_t codePoint);

} // namespace quorvane
