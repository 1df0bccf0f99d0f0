#include "json/JsonWriter.h"

#include "json/JsonValue.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

TEST(JsonWriterTest, QuotesStringsAsThePlatformEncoderDoes) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", R"("")"},
        {"a\"b", R"("a\"b")"},
        {"a\\b", R"("a\\b")"},
        {"a/b", R"("a\/b")"},
        {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
        {std::string("\0\x01\x1f", 3), R"("\u0000\u0001\u001f")"},
        {"\x7f", "\"\x7f\""},
        {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x90\x8B", "\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x90\x8B\""},
        // Bytes that are not UTF-8 cannot travel in JSON: each becomes U+FFFD.
        {"a\xFF"
         "b",
         "\"a\xEF\xBF\xBD"
         "b\""},
        {"\xE2\x82", "\"\xEF\xBF\xBD\xEF\xBF\xBD\""},
        {"\xED\xA0\x80!", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD!\""},
        {"\xC3\xA9\xFF", "\"\xC3\xA9\xEF\xBF\xBD\""},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(JsonWriter::quoted(text), expected);
    }
}

TEST(JsonWriterTest, WritesCompactlyWithMembersInTheirOrder) {
    std::vector<JsonValue::Member> members;
    members.push_back({"timestamp", JsonValue::fromNumberText("785000000.5")});
    members.push_back({"currency", JsonValue::fromString("USD")});
    members.push_back(
        {"flags", JsonValue::fromElements({JsonValue::fromBool(true), JsonValue::fromBool(false), JsonValue{},
                                           JsonValue::fromElements({})})});
    members.push_back({"empty", JsonValue::fromMembers({})});
    const JsonValue value =
        JsonValue::fromElements({JsonValue::fromMembers(members), JsonValue::fromNumberText("-0.0037")});
    EXPECT_EQ(
        JsonWriter::write(value),
        R"([{"timestamp":785000000.5,"currency":"USD","flags":[true,false,null,[]],"empty":{}},-0.0037])");
}

} // namespace
} // namespace quorvane
