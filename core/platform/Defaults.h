// Typed reads and writes over the settings store, with the conversions a user-defaults store makes.
#pragma once

#include "platform/SettingsStore.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quorvane {

// A store may give back another type than was written: an INI file returns
// every scalar as text, a property list returns integers for whole doubles.
// These reads convert the way the platform's user defaults do, so the
// program's rules see the same values on every platform.
class Defaults {
public:
    explicit Defaults(SettingsStore& store);

    bool hasValue(const std::string& key) const;

    // False when absent; numbers are true when non-zero; text is true for
    // "yes" or "true" in any case, or a non-zero leading integer.
    bool boolValue(const std::string& key) const;
    // 0 when absent or not numeric; text is read as a number when it is one
    // (blanks around it allowed); true reads as 1. May be NaN or infinite
    // when the store holds such a value.
    double doubleValue(const std::string& key) const;
    // Text, or a number's text; nothing for booleans, bytes or absence.
    std::optional<std::string> stringValue(const std::string& key) const;
    // Bytes only; any other type reads as nothing.
    std::optional<std::string> dataValue(const std::string& key) const;

    void setBool(const std::string& key, bool value);
    void setInteger(const std::string& key, std::int64_t value);
    void setString(const std::string& key, const std::string& value);
    void setData(const std::string& key, const std::string& bytes);
    void remove(const std::string& key);

private:
    SettingsStore& m_store;
};

} // namespace quorvane
