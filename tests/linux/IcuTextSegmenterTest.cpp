#include "platform/icu/IcuTextSegmenter.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvane {
namespace {

TEST(IcuTextSegmenterTest, CountsWhatAReaderSeesAsOneCharacter) {
    struct Case {
        std::string text;
        std::size_t count;
        std::size_t bytes;
    };
    const std::string accented = "e\u0301";           // e + combining acute: 1 + 2 bytes
    const std::string flag = "\U0001F1E9\U0001F1EA";  // regional indicators D, E: 8 bytes
    const std::string thumb = "\U0001F44D\U0001F3FD"; // thumbs up + medium skin tone: 8 bytes
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"; // 25 bytes
    const Case cases[] = {
        {"HTTP 401", 4, 4},
        {"HTTP 401", 0, 0},
        {"", 3, 0},
        {accented + "x", 1, 3},
        {accented + "x", 2, 4},
        {"\u00e9x", 1, 2},
        {flag + "a", 1, 8},
        {flag + flag, 1, 8},
        {thumb + "!", 1, 8},
        {family + "ok", 1, 25},
        {family + "ok", 2, 26},
        {"\r\nx", 1, 2},
        {"\U0001F40B DS", 2, 5},
        // Fewer clusters than asked for: the whole text.
        {"ab", 5, 2},
        {thumb, 2, 8},
    };
    IcuTextSegmenter segmenter;
    for (const Case& c : cases) {
        EXPECT_EQ(segmenter.prefixLength(c.text, c.count), c.bytes) << c.text << " / " << c.count;
    }
}

TEST(IcuTextSegmenterTest, ReadsOnlyTheBytesItIsGiven) {
    // The view ends inside a longer buffer: the text past its end is not read.
    const std::string buffer = "ab\U0001F44D\U0001F3FD";
    IcuTextSegmenter segmenter;
    EXPECT_EQ(segmenter.prefixLength(std::string_view(buffer).substr(0, 2), 10), 2u);
    EXPECT_EQ(segmenter.prefixLength(std::string_view(buffer).substr(0, 6), 3), 6u);
}

TEST(IcuTextSegmenterTest, BytesThatAreNotUtf8NeverOverrunTheText) {
    const std::string texts[] = {"\xff\xfe", "a\xe2\x82", "\xf0\x9f\x90", std::string("\0\0", 2)};
    IcuTextSegmenter segmenter;
    for (const std::string& text : texts) {
        for (std::size_t count = 0; count <= 4; ++count) {
            std::size_t length = segmenter.prefixLength(text, count);
            EXPECT_LE(length, text.size());
            if (count >= text.size()) {
                EXPECT_EQ(length, text.size());
            }
        }
    }
}

} // namespace
} // namespace quorvane
