#include "demo/DemoSettingsStore.h"

namespace quorvane {

std::optional<SettingValue> DemoSettingsStore::value(const std::string& key) const {
    const auto found = m_values.find(key);
    if (found == m_values.end()) {
        return std::nullopt;
    }
    return found->second;
}

void DemoSettingsStore::setValue(const std::string& key, const SettingValue& value) {
    m_values[key] = value;
}

void DemoSettingsStore::remove(const std::string& key) {
    m_values.erase(key);
}

} // namespace quorvane
