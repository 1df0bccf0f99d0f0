// Writes a JsonValue as compact text, the way the platform's JSON encoder does with its defaults.
#pragma once

#include "json/JsonValue.h"

#include <string>
#include <string_view>

namespace quorvane {

// No blanks, members in their order, number text as held. Strings escape
// '"', '\\' and '/' (the encoder's default), control characters as \b \f \n
// \r \t or \u00xx; other characters go out as UTF-8. Bytes that are not valid
// UTF-8 become U+FFFD, since JSON text cannot carry them.
class JsonWriter {
public:
    static std::string write(const JsonValue& value);
    // The string as a JSON string literal, quotes included.
    static std::string quoted(std::string_view text);

private:
    static void append(std::string& out, const JsonValue& value);
};

} // namespace quorvane
