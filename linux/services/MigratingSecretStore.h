// The Secret Service with the key file behind it: the key is found in either, and moves into the service.
#pragma once

#include "platform/SecretStore.h"

#include <memory>

namespace quorvane {

// Where the Secret Service did not answer once, the key went to the file; a
// later run that finds the service must not lose it. Reading looks in the
// service first and then in the file. The first time the store is used, a key
// in the file moves into the service (replacing one there: the file's is the
// later, since saving to the service removes the file) and the file goes,
// once the service holds it. Saving keeps the key in the service alone;
// removing clears both, so two different keys are never kept.
class MigratingSecretStore : public SecretStore {
public:
    MigratingSecretStore(std::unique_ptr<SecretStore> service, std::unique_ptr<SecretStore> file);

    SecretCopyResult copy(const std::string& service, const std::string& account) override;
    std::int32_t add(const std::string& service, const std::string& account,
                     const std::string& data) override;
    std::int32_t update(const std::string& service, const std::string& account,
                        const std::string& data) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;

private:
    // Moves the file's item into the service, at most once per item and store.
    void migrate(const std::string& service, const std::string& account);
    // The status of a save; a successful one leaves no copy in the file.
    std::int32_t savedInServiceAlone(std::int32_t status, const std::string& service,
                                     const std::string& account);

    std::unique_ptr<SecretStore> m_service;
    std::unique_ptr<SecretStore> m_file;
    bool m_migrated = false;
};

} // namespace quorvane
