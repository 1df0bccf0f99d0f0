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
    const std::vector<std::pair<std::string, std::string>> cases = {
        {R"( { "z" : 1.50 , "a" : [ 0.1, -0.0037, 1e5, 2.5E-3, 110.00 ] } )",
         R"({"z":1.50,"a":[0.1,-0.0037,1e5,2.5E-3,110.00]})"},
        {"[12345678901234567890123456789012345678.123456789]",
         "[12345678901234567890123456789012345678.123456789]"},
        {"[18446744073709551615,18446744073709551616,-9223372036854775808,-9223372036854775809]",
         "[18446744073709551615,18446744073709551616,-9223372036854775808,-9223372036854775809]"},
        {"[-0,0,-1]", "[0,0,-1]"},
        // Beyond any double: kept as written, for the caller to refuse where it needs a number.
        {"[1e400,-1E-400," + std::string(400, '9') + "]", "[1e400,-1E-400," + std::string(400, '9') + "]"},
        {R"({"b":true,"n":null,"f":false,"e":{},"l":[]})", R"({"b":true,"n":null,"f":false,"e":{},"l":[]})"},
        {R"(["\u00e9\/\"\\\n","\ud83d\udc0b"])", "[\"\xC3\xA9\\/\\\"\\\\\\n\",\"\xF0\x9F\x90\x8B\"]"},
        {"\xEF\xBB\xBF[1]", "[1]"},
        {"\"text\"", "\"text\""},
        {"7", "7"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(reread(text), expected) << text;
    }
}

TEST(JsonReaderTest, GivesKindsAndContentsThroughItsAccessors) {
    const JsonReader::Result result = JsonReader::parse(R"({"s":"a\u0000b","n":2.50,"t":true,"x":[null]})");
    ASSERT_TRUE(result.value);
    const JsonValue& root = *result.value;
    EXPECT_EQ(root.kind(), JsonValue::Kind::Object);
    ASSERT_EQ(root.members().size(), 4u);
    EXPECT_EQ(root.members()[0].key, "s");
    EXPECT_EQ(root.find("s")->text(), std::string("a\0b", 3));
    EXPECT_EQ(root.find("n")->kind(), JsonValue::Kind::Number);
    EXPECT_EQ(root.find("n")->text(), "2.50");
    EXPECT_TRUE(root.find("t")->boolValue());
    EXPECT_EQ(root.find("x")->elements().size(), 1u);
    EXPECT_EQ(root.find("x")->elements()[0].kind(), JsonValue::Kind::Null);
    EXPECT_EQ(root.find("missing"), nullptr);
    // Another kind's content reads empty instead of failing.
    EXPECT_EQ(root.find("x")->text(), "");
    EXPECT_FALSE(root.find("n")->boolValue());
    EXPECT_EQ(root.find("s")->find("s"), nullptr);
}

TEST(JsonReaderTest, DuplicateKeysAreAllKeptAndTheLastOneIsFound) {
    const JsonReader::Result result = JsonReader::parse(R"({"a":1,"b":2,"a":3})");
    ASSERT_TRUE(result.value);
    EXPECT_EQ(result.value->members().size(), 3u);
    EXPECT_EQ(result.value->find("a")->text(), "3");
    EXPECT_EQ(JsonWriter::write(*result.value), R"({"a":1,"b":2,"a":3})");
}

TEST(JsonReaderTest, ReportsWhatWentWrongAndWhere) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "empty input"},
        {"   ", "unexpected end of input"},
        {"[1", "unexpected end of input"},
        {"[1,}", "syntax error at byte 4"},
        {"[1 2]", "syntax error at byte 4"},
        {R"({"a":1}x)", "syntax error at byte 8"},
        {"[01]", "syntax error at byte 3"},
        {"[1.]", "syntax error at byte 4"},
        {"{'a':1}", "syntax error at byte 2"},
        {"[\"a\nb\"]", "syntax error at byte 4"},
        {R"(["\ud800"])", "syntax error at byte 9"},
        {"// note\n[1]", "syntax error at byte 1"},
        {"\xEF\xBB\xBF[1 2]", "syntax error at byte 7"},
        {"[\"\xFF\"]", "not valid UTF-8"},
        {"\xFE\xFF[1]", "not valid UTF-8"},
        {std::string("[1]\0", 4), "syntax error at byte 4"},
        {std::string("[\"a\0\"]", 6), "syntax error at byte 4"},
    };
    for (const auto& [text, expected] : cases) {
        const JsonReader::Result result = JsonReader::parse(text);
        EXPECT_FALSE(result.value) << text;
        EXPECT_EQ(result.error, expected) << text;
    }
}

TEST(JsonReaderTest, ErrorsNeverQuoteTheText) {
    const std::string secret = "sk-0123456789abcdef";
    for (const std::string& text :
         {"{\"key\":\"" + secret + "\"", "[" + secret + "]", secret, "{\"" + secret + "\" 1}"}) {
        const JsonReader::Result result = JsonReader::parse(text);
        ASSERT_FALSE(result.value) << text;
        EXPECT_EQ(result.error.find("sk-"), std::string::npos) << result.error;
        EXPECT_EQ(result.error.find("0123"), std::string::npos) << result.error;
    }
}

TEST(JsonReaderTest, RefusesNestingBeyondTheLimit) {
    const std::size_t limit = JsonReader::kMaxDepth;
    const std::string deepest = std::string(limit, '[') + std::string(limit, ']');
    EXPECT_TRUE(JsonReader::parse(deepest).value);

    const std::string tooDeep = std::string(limit + 1, '[') + std::string(limit + 1, ']');
    const JsonReader::Result result = JsonReader::parse(tooDeep);
    EXPECT_FALSE(result.value);
    EXPECT_EQ(result.error, "nested deeper than 512 levels");

    // Far deeper input fails the same way instead of exhausting the stack.
    const std::string hostile(1'000'000, '[');
    EXPECT_EQ(JsonReader::parse(hostile).error, "nested deeper than 512 levels");
}

} // namespace
} // namespace quorvane
