#include "platform/Defaults.h"

#include "fakes/MemorySettingsStore.h"
#include "values/Utf8.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quorvane {
namespace {

// What each stored value reads as through every typed read.
TEST(DefaultsTest, ConvertsStoredValuesTheWayUserDefaultsDo) {
    struct Case {
        const char* name;
        std::optional<SettingValue> stored;
        bool asBool;
        double asDouble;
        std::optional<std::string> asString;
        std::optional<std::string> asData;
    };
    const Case cases[] = {
        {"absent", std::nullopt, false, 0.0, std::nullopt, std::nullopt},
        {"false", SettingValue{false}, false, 0.0, std::nullopt, std::nullopt},
        {"true", SettingValue{true}, true, 1.0, std::nullopt, std::nullopt},
        {"integer 0", SettingValue{std::int64_t{0}}, false, 0.0, "0", std::nullopt},
        {"integer 900", SettingValue{std::int64_t{900}}, true, 900.0, "900", std::nullopt},
        {"double 30.7", SettingValue{30.7}, true, 30.7, "30.7", std::nullopt},
        {"text true", SettingValue{std::string("true")}, true, 0.0, "true", std::nullopt},
        {"text YES", SettingValue{std::string("YES")}, true, 0.0, "YES", std::nullopt},
        {"text false", SettingValue{std::string("false")}, false, 0.0, "false", std::nullopt},
        {"text 45", SettingValue{std::string(" 45 ")}, true, 45.0, " 45 ", std::nullopt},
        {"text 10.00 (a baseline)", SettingValue{std::string("10.00")}, true, 10.0, "10.00", std::nullopt},
        {"text not a number", SettingValue{std::string("12abc")}, true, 0.0, "12abc", std::nullopt},
        {"empty text", SettingValue{std::string()}, false, 0.0, "", std::nullopt},
        {"bytes", SettingValue{SettingBytes{"[]"}}, false, 0.0, std::nullopt, "[]"},
    };
    for (const Case& c : cases) {
        MemorySettingsStore store;
        if (c.stored) {
            store.setValue("key", *c.stored);
        }
        Defaults defaults(store);
        EXPECT_EQ(defaults.hasValue("key"), c.stored.has_value()) << c.name;
        EXPECT_EQ(defaults.boolValue("key"), c.asBool) << c.name;
        EXPECT_EQ(defaults.doubleValue("key"), c.asDouble) << c.name;
        EXPECT_EQ(defaults.stringValue("key"), c.asString) << c.name;
        EXPECT_EQ(defaults.dataValue("key"), c.asData) << c.name;
    }
}

TEST(DefaultsTest, NonFiniteNumbersPassThroughWithoutTrouble) {
    MemorySettingsStore store;
    Defaults defaults(store);
    store.setValue("nan", std::nan(""));
    store.setValue("inf", std::string("inf"));
    EXPECT_TRUE(std::isnan(defaults.doubleValue("nan")));
    EXPECT_FALSE(defaults.boolValue("nan"));
    EXPECT_EQ(defaults.doubleValue("inf"), std::numeric_limits<double>::infinity());
}

TEST(DefaultsTest, WritesStoreTheirOwnTypes) {
    MemorySettingsStore store;
    Defaults defaults(store);
    defaults.setBool("b", false);
    defaults.setInteger("i", 300);
    defaults.setString("s", "2026-11-22");
    defaults.setData("d", std::string("\0\xff", 2));
    defaults.remove("s");
    EXPECT_EQ(store.value("b"), SettingValue{false});
    EXPECT_EQ(store.value("i"), SettingValue{std::int64_t{300}});
    EXPECT_EQ(store.value("s"), std::nullopt);
    EXPECT_EQ(store.value("d"), SettingValue{SettingBytes{std::string("\0\xff", 2)}});
}

TEST(Utf8Test, AcceptsOnlyWellFormedUtf8) {
    struct Case {
        std::string bytes;
        bool valid;
    };
    const Case cases[] = {
        {"", true},
        {"\xF0\x9F\x90\x8B whale", true},
        {"caf\xC3\xA9", true},
        {"\xEF\xBF\xBF", true},         // U+FFFF
        {"\xF4\x8F\xBF\xBF", true},     // U+10FFFF
        {"\xFF", false},                // never a lead byte
        {"\xC0\xAF", false},            // overlong slash
        {"\xE0\x80\xAF", false},        // overlong
        {"\xED\xA0\x80", false},        // a surrogate
        {"\xF4\x90\x80\x80", false},    // above U+10FFFF
        {"\x80", false},                // a lone continuation
        {"ok\xE2\x82", false},          // truncated at the end
        {std::string("a\0b", 3), true}, // NUL is a character
    };
    for (const Case& c : cases) {
        EXPECT_EQ(isValidUtf8(c.bytes), c.valid) << testing::PrintToString(c.bytes);
    }
}

} // namespace
} // namespace quorvane
