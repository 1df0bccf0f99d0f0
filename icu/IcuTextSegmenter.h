// Grapheme clusters of UTF-8 text by ICU's character break rules: the Linux shell's and the tests' segmenter.
#pragma once

#include "platform/TextSegmenter.h"

#include <cstddef>
#include <string_view>

namespace quorvane {

// Uses the root locale's extended grapheme clusters, so an emoji with a skin
// tone, a flag, a ZWJ family or a letter with combining accents each count as
// one. The text is read in place; nothing is copied or converted to UTF-16.
class IcuTextSegmenter : public TextSegmenter {
public:
    // Bytes that are not valid UTF-8 are never split further than ICU's own
    // replacement rules allow, and the answer never exceeds the text's length.
    // Should ICU fail to build its break iterator (its data missing), the whole
    // length is answered: a text left uncut is better than one cut wrongly.
    std::size_t prefixLength(std::string_view utf8, std::size_t count) const override;
};

} // namespace quorvane
