// User-perceived characters as Foundation's string system sees them (composed character sequences).
#pragma once

#include "platform/TextSegmenter.h"

#include <cstddef>
#include <string_view>

namespace quorvane {

// Text that does not decode as UTF-8 counts as one piece: its whole length is the answer.
class MacTextSegmenter : public TextSegmenter {
public:
    std::size_t prefixLength(std::string_view utf8, std::size_t count) const override;
};

} // namespace quorvane
