#include "platform/Defaults.h"

#include "fakes/MemorySettingsStore.h"

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
        {"text YES", SettingValue{std::string("YES")}, true, 0.0, "YES", std::nullopt},
        {"text false", SettingValue{std::string("false")}, false, 0.0, "false", std::nullopt},
        {"text 45", SettingValue{std::string(" 45 ")}, true, 45.0, " 45 ", std::nullopt},
        {"text not a number", SettingValue{std::string("12abc")}, true, 0.0, "12abc", std::nullopt},
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

} // namespace
} // namespace quorvane
