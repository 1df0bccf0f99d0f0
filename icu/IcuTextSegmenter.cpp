#include "icu/IcuTextSegmenter.h"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace quorvane {

namespace {

struct UTextCloser {
    void operator()(UText* text) const { utext_close(text); }
};

} // namespace

std::size_t IcuTextSegmenter::prefixLength(std::string_view utf8, std::size_t count) const {
    if (count == 0 || utf8.empty()) {
        return 0;
    }

    UErrorCode status = U_ZERO_ERROR;
    // A UTF-8 UText's native indexes are byte offsets into the caller's text,
    // which is exactly the unit the answer is given in.
    std::unique_ptr<UText, UTextCloser> text(
        utext_openUTF8(nullptr, utf8.data(), static_cast<std::int64_t>(utf8.size()), &status));
    std::unique_ptr<icu::BreakIterator> clusters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status) || !text || !clusters) {
        return utf8.size();
    }
    clusters->setText(text.get(), status);
    if (U_FAILURE(status)) {
        return utf8.size();
    }

    std::int32_t boundary = 0;
    for (std::size_t taken = 0; taken < count; ++taken) {
        std::int32_t next = clusters->next();
        if (next == icu::BreakIterator::DONE) {
            return utf8.size();
        }
        boundary = next;
    }
    return std::min(static_cast<std::size_t>(boundary), utf8.size());
}

} // namespace quorvane
