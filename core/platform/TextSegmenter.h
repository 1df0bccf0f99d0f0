// User-perceived characters (grapheme clusters) of a text, as the platform's text system sees them.
#pragma once

#include <cstddef>
#include <string_view>

namespace quorvane {

// Counting characters the way a user does ("👍🏽" and "é" written with a
// combining accent are one each) needs the Unicode segmentation tables, which
// each platform already ships; the core asks instead of carrying them.
class TextSegmenter {
public:
    virtual ~TextSegmenter() = default;

    // The byte length of the first `count` grapheme clusters of valid UTF-8
    // text (the whole length when it has fewer).
    virtual std::size_t prefixLength(std::string_view utf8, std::size_t count) const = 0;
};

} // namespace quorvane
