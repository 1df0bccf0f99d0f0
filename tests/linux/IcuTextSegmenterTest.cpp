#include "icu/IcuTextSegmenter.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvane {
namespace {

TEST(IcuTextSegmenterTest, CountsWhatAReaderSeesAsOneCharacterWithinTheBytesItIsGiven) {
    // A family of four joined by zero-width joiners (25 bytes), then "ok".
    const std::string familyOk = "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466ok";
    const std::string thumb = "\U0001F44D\U0001F3FD!"; // thumbs up + medium skin tone: 8 bytes
    const std::tuple<std::string_view, std::size_t, std::size_t> cases[] = {
        {"HTTP 401", 4, 4},
        {"HTTP 401", 0, 0},
        {"e\u0301x", 1, 3},                                 // e + combining acute
        {"\U0001F1E9\U0001F1EA\U0001F1E9\U0001F1EA", 1, 8}, // two flags
        {thumb, 1, 8},
        {familyOk, 2, 26},
        {"\r\nx", 1, 2},
        // Fewer clusters than asked for: the whole text.
        {"ab", 5, 2},
        // The view ends inside a longer buffer: the text past its end is not read.
        {std::string_view("ab\U0001F44D\U0001F3FD").substr(0, 2), 10, 2},
        {std::string_view("ab\U0001F44D\U0001F3FD").substr(0, 6), 3, 6},
        // Bytes that are not UTF-8 never overrun the text.
        {"\xff\xfe", 2, 2},
        {"a\xe2\x82", 4, 3},
        {"\xf0\x9f\x90", 3, 3},
    };
    IcuTextSegmenter segmenter;
    for (const auto& [text, count, bytes] : cases) {
        EXPECT_EQ(segmenter.prefixLength(text, count), bytes) << text << " / " << count;
    }
}

} // namespace
} // namespace quorvane
