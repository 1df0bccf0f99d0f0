// The secret store on the login keychain's generic-password items (Security framework).
#pragma once

#include "platform/SecretStore.h"

#include <cstdint>
#include <string>

namespace quorvane {

// An item is addressed by class, service and account only, and only its value
// data is ever written: no accessibility class, access group, label or
// synchronisation attribute, so the system's defaults for a new item apply.
// Statuses are passed on exactly as the Security framework returns them.
//
// Every call runs synchronously on the caller's thread and may wait there
// while macOS asks the user to allow access to the item.
class KeychainSecretStore : public SecretStore {
public:
    SecretCopyResult copy(const std::string& service, const std::string& account) override;
    // No reference to the new item is asked for.
    std::int32_t add(const std::string& service, const std::string& account,
                     const std::string& data) override;
    std::int32_t update(const std::string& service, const std::string& account,
                        const std::string& data) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;
};

} // namespace quorvane
