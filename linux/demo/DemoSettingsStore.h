// The demo's settings: held in memory for one run, so nothing of the user's is read or written.
#pragma once

#include "platform/SettingsStore.h"

#include <map>
#include <optional>
#include <string>

namespace quorvane {

// Answers with exactly the type written, as the user's store does within one
// run; the demo never restarts, so the file's habit of answering text after
// a restart never arises.
class DemoSettingsStore : public SettingsStore {
public:
    std::optional<SettingValue> value(const std::string& key) const override;
    void setValue(const std::string& key, const SettingValue& value) override;
    void remove(const std::string& key) override;

private:
    std::map<std::string, SettingValue> m_values;
};

} // namespace quorvane
