// One value of the settings store: the types a user-defaults store can hold.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace quorvane {

// Bytes travel as std::string: an owned, contiguous byte buffer.
struct SettingBytes {
    std::string bytes;
    friend bool operator==(const SettingBytes&, const SettingBytes&) = default;
};

using SettingValue = std::variant<bool, std::int64_t, double, std::string, SettingBytes>;

} // namespace quorvane
