// A settings store in memory that also records the order of writes.
#pragma once

#include "platform/SettingsStore.h"

#include <map>
#include <string>
#include <vector>

namespace quorvane {

class MemorySettingsStore : public SettingsStore {
public:
    std::optional<SettingValue> value(const std::string& key) const override {
        auto it = m_values.find(key);
        return it == m_values.end() ? std::nullopt : std::optional<SettingValue>(it->second);
    }
    void setValue(const std::string& key, const SettingValue& value) override {
        m_values[key] = value;
        m_log.push_back("set " + key);
    }
    void remove(const std::string& key) override {
        m_values.erase(key);
        m_log.push_back("remove " + key);
    }

    // "set KEY" / "remove KEY", in call order.
    const std::vector<std::string>& log() const { return m_log; }

private:
    std::map<std::string, SettingValue> m_values;
    std::vector<std::string> m_log;
};

} // namespace quorvane
