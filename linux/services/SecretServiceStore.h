// The secret store on the desktop's Secret Service (GNOME Keyring, KWallet, KeePassXC) through libsecret.
#pragma once

#include "platform/SecretStore.h"

#include <cstdint>
#include <string>

namespace quorvane {

// One item per service and account in the default collection, found by its
// two string attributes "service" and "account" whatever schema name it was
// stored under, so an item made by hand with
//   secret-tool store --label=Quorvane service Quorvane account DeepSeekAPIKey
// is the same item. The value is kept as bytes.
//
// Statuses follow the keychain: success, item not found, and for failures
// kSecretStatusNotAvailable (no D-Bus session or no Secret Service on it),
// kSecretStatusInteractionNotAllowed (the collection stayed locked),
// kSecretStatusUserCanceled (the unlock prompt was dismissed) or
// kSecretStatusInternalComponent (anything else). libsecret's messages are
// never passed on. Every call blocks until the service answers, including
// any unlock prompt it shows.
class SecretServiceStore : public SecretStore {
public:
    SecretCopyResult copy(const std::string& service, const std::string& account) override;
    // kSecretStatusDuplicateItem when the item exists.
    std::int32_t add(const std::string& service, const std::string& account,
                     const std::string& data) override;
    // kSecretStatusItemNotFound when no item exists; the value is replaced otherwise.
    std::int32_t update(const std::string& service, const std::string& account,
                        const std::string& data) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;

private:
    std::int32_t store(const std::string& service, const std::string& account, const std::string& data);
};

} // namespace quorvane
