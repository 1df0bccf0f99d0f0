// The settings store on the standard user defaults: settings, spend baselines and history.
#pragma once

#include "platform/SettingsStore.h"

#include <optional>
#include <string>

namespace quorvane {

// Values are written as property-list objects (a boolean NSNumber, a 64-bit
// integer NSNumber, a double NSNumber, NSString, NSData) and read back as the
// same types; a boolean is told from an integer by its Core Foundation type,
// so false never reads as 0. An object of another kind under a key (an array
// or a date some other program wrote) reads as no value.
//
// Each write goes to the defaults system as it is made, which keeps it
// whatever becomes of this process; no flush is called (Apple documents
// -synchronize as unnecessary).
class MacSettingsStore : public SettingsStore {
public:
    std::optional<SettingValue> value(const std::string& key) const override;
    // Text that is not UTF-8 is stored as the empty string.
    void setValue(const std::string& key, const SettingValue& value) override;
    void remove(const std::string& key) override;
};

} // namespace quorvane
