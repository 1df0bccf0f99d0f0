// Turns JSON text into a JsonValue without passing numbers through double.
#pragma once

#include "json/JsonValue.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

// Strict JSON (RFC 8259) in UTF-8: one value, only blanks around it, no
// comments. Integers are kept as their decimal text ("-0" reads as "0", the
// one integer JSON can spell two ways); other numbers as written.
class JsonReader {
public:
    // Deeper nesting is refused rather than risk the stack on teardown.
    static constexpr std::size_t kMaxDepth = 512;

    struct Result {
        std::optional<JsonValue> value;
        // One line when value is empty: what was wrong and at which byte,
        // never any of the text itself.
        std::string error;
    };

    static Result parse(std::string_view text);
};

} // namespace quorvane
