// The system's secret store, shaped after the generic-password calls of a keychain.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quorvane {

// Status codes as the keychain reports them; any other value is a failure.
enum : std::int32_t {
    kSecretStatusSuccess = 0,
    kSecretStatusItemNotFound = -25300,
};

struct SecretCopyResult {
    std::int32_t status = kSecretStatusItemNotFound;
    // The item's data; nothing when the store returned no result or a result
    // that is not data.
    std::optional<std::string> data;
};

// One generic-password item is addressed by service and account. Values are
// bytes (the key's UTF-8), held in std::string.
class SecretStore {
public:
    virtual ~SecretStore() = default;

    virtual SecretCopyResult copy(const std::string& service, const std::string& account) = 0;
    virtual std::int32_t add(const std::string& service, const std::string& account,
                             const std::string& data) = 0;
    virtual std::int32_t update(const std::string& service, const std::string& account,
                                const std::string& data) = 0;
    virtual std::int32_t remove(const std::string& service, const std::string& account) = 0;
};

} // namespace quorvane
