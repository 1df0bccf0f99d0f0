#include "services/MigratingSecretStore.h"

namespace quorvane {

MigratingSecretStore::MigratingSecretStore(std::unique_ptr<SecretStore> service,
                                           std::unique_ptr<SecretStore> file)
    : m_service(std::move(service))
    , m_file(std::move(file)) {}

void MigratingSecretStore::migrate(const std::string& service, const std::string& account) {
    if (m_migrated) {
        return;
    }
    m_migrated = true;
    const SecretCopyResult inFile = m_file->copy(service, account);
    if (inFile.status != kSecretStatusSuccess || !inFile.data) {
        return;
    }
    const SecretCopyResult inService = m_service->copy(service, account);
    std::int32_t moved = kSecretStatusSuccess;
    if (inService.status == kSecretStatusItemNotFound) {
        moved = m_service->add(service, account, *inFile.data);
    } else if (inService.status != kSecretStatusSuccess) {
        // The service answers, but not about this item: the file stays as it is.
        return;
    } else if (inService.data != inFile.data) {
        moved = m_service->update(service, account, *inFile.data);
    }
    if (moved == kSecretStatusSuccess) {
        m_file->remove(service, account);
    }
}

std::int32_t MigratingSecretStore::savedInServiceAlone(std::int32_t status, const std::string& service,
                                                       const std::string& account) {
    if (status == kSecretStatusSuccess) {
        m_file->remove(service, account);
    }
    return status;
}

SecretCopyResult MigratingSecretStore::copy(const std::string& service, const std::string& account) {
    migrate(service, account);
    SecretCopyResult result = m_service->copy(service, account);
    if (result.status == kSecretStatusSuccess) {
        return result;
    }
    // A key that could not be moved is still the user's key.
    SecretCopyResult inFile = m_file->copy(service, account);
    return inFile.status == kSecretStatusSuccess ? inFile : result;
}

std::int32_t MigratingSecretStore::add(const std::string& service, const std::string& account,
                                       const std::string& data) {
    migrate(service, account);
    return savedInServiceAlone(m_service->add(service, account, data), service, account);
}

std::int32_t MigratingSecretStore::update(const std::string& service, const std::string& account,
                                          const std::string& data) {
    migrate(service, account);
    return savedInServiceAlone(m_service->update(service, account, data), service, account);
}

std::int32_t MigratingSecretStore::remove(const std::string& service, const std::string& account) {
    const std::int32_t fromFile = m_file->remove(service, account);
    const std::int32_t fromService = m_service->remove(service, account);
    // Removed when it left either store and no store failed to let go of it.
    if (fromService != kSecretStatusSuccess && fromService != kSecretStatusItemNotFound) {
        return fromService;
    }
    if (fromFile != kSecretStatusSuccess && fromFile != kSecretStatusItemNotFound) {
        return fromFile;
    }
    return fromService == kSecretStatusSuccess || fromFile == kSecretStatusSuccess
               ? kSecretStatusSuccess
               : kSecretStatusItemNotFound;
}

} // namespace quorvane
