#include "json/JsonReader.h"
#include "json/JsonWriter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

std::string reread(std::string_view text) {
    const JsonReader::Result result = JsonReader::parse(text);
    return result.value ? JsonWriter::write(*result.value) : "error: " + result.error;
}

TEST(JsonReaderTest, KeepsNumbersAsTheirSourceTextAndMembersInSourceOrder) {
    // Beyond any double or integer: kept as written, for the caller to refuse where it needs a number.
    const std::string huge = "[12345678901234567890123456789012345678.123456789,18446744073709551616,"
                             "-9223372036854775809,1e400,-1E-400," +
                             std::string(400, '9') + "]";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {R"( { "z" : 1.50 , "a" : [ 0.1, -0.0037, 1e5, 2.5E-3, 110.00 ] } )",
         R"({"z":1.50,"a":[0.1,-0.0037,1e5,2.5E-3,110.00]})"},
        {huge, huge},
        {"[-0,0,-1]", "[0,0,-1]"},
        {R"({"b":true,"n":null,"f":false,"e":{},"l":[]})", R"({"b":true,"n":null,"f":false,"e":{},"l":[]})"},
        // Hex digits of either case, in escapes of one, two, three and four bytes.
        {R"(["\u0039\u00e9\u20ac\u00AF\/\"\\\n","\uD83D\uDC0B\udbff\udfff"])",
         "[\"9\xC3\xA9\xE2\x82\xAC\xC2\xAF\\/\\\"\\\\\\n\",\"\xF0\x9F\x90\x8B\xF4\x8F\xBF\xBF\"]"},
        {"\xEF\xBB\xBF[1]", "[1]"},
        {"\"text\"", "\"text\""},
        {"7", "7"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(reread(text), expected) << text;
    }
}

TEST(JsonReaderTest, ReportsWhatWentWrongAndWhere) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "empty input"},
        {"   ", "unexpected end of input"},
        {"[1", "unexpected end of input"},
        {"[1,}", "syntax error at byte 4"},
        {R"({"a":1}x)", "syntax error at byte 8"},
        {"[01]", "syntax error at byte 3"},
        {"[1.]", "syntax error at byte 4"},
        {"{'a':1}", "syntax error at byte 2"},
        {"[\"a\nb\"]", "syntax error at byte 4"},
        {R"(["\ud800"])", "syntax error at byte 9"},
        {R"(["\ud800\u0041"])", "syntax error at byte 14"},
        {R"(["\udc00"])", "syntax error at byte 9"},
        {R"(["\u00g0"])", "syntax error at byte 7"},
        {"\xEF\xBB\xBF[1 2]", "syntax error at byte 7"},
        {"[\"\xFF\"]", "not valid UTF-8"},
        {std::string("[1]\0", 4), "syntax error at byte 4"},
        {std::string("[\"a\0\"]", 6), "syntax error at byte 4"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(reread(text), "error: " + expected) << text;
    }
}

TEST(JsonReaderTest, RefusesNestingBeyondTheLimit) {
    const std::size_t limit = JsonReader::kMaxDepth;
    EXPECT_TRUE(JsonReader::parse(std::string(limit, '[') + std::string(limit, ']')).value);
    EXPECT_EQ(JsonReader::parse(std::string(limit + 1, '[') + std::string(limit + 1, ']')).error,
              "nested deeper than 512 levels");
    // Far deeper input fails the same way instead of exhausting the stack.
    EXPECT_EQ(JsonReader::parse(std::string(1'000'000, '[')).error, "nested deeper than 512 levels");
}

TEST(JsonWriterTest, QuotesStringsAsThePlatformEncoderDoes) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", R"("")"},
        {"a\"b\\c/d", R"("a\"b\\c\/d")"},
        {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
        {std::string("\0\x01\x1f", 3), R"("\u0000\u0001\u001f")"},
        {"\x7f", "\"\x7f\""},
        {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x90\x8B", "\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x90\x8B\""},
        // Bytes that are not UTF-8 cannot travel in JSON: each becomes U+FFFD.
        {"a\xFF", "\"a\xEF\xBF\xBD\""},
        {"\xE2\x82", "\"\xEF\xBF\xBD\xEF\xBF\xBD\""},
        {"\xED\xA0\x80!", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD!\""},
        {"\xC3\xA9\xFF", "\"\xC3\xA9\xEF\xBF\xBD\""},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(JsonWriter::quoted(text), expected);
    }
}

} // namespace
} // namespace quorvane
