// The persistent key-value store for settings, baselines and history.
#pragma once

#include "values/SettingValue.h"

#include <optional>
#include <string>

namespace quorvane {

// A store answers with exactly what it holds; the conversions between types
// (a boolean read from a string, a number read from text) are the program's
// own rules and live in Defaults. Every write is durable when it returns.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    // Nothing when the store holds no value under the key.
    virtual std::optional<SettingValue> value(const std::string& key) const = 0;
    virtual void setValue(const std::string& key, const SettingValue& value) = 0;
    virtual void remove(const std::string& key) = 0;
};

} // namespace quorvane
