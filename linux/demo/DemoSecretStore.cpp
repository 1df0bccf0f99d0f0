#include "demo/DemoSecretStore.h"

#include "services/SecretStatus.h"

namespace quorvane {

SecretCopyResult DemoSecretStore::copy(const std::string& service, const std::string& account) {
    const auto found = m_items.find({service, account});
    if (found == m_items.end()) {
        return {kSecretStatusItemNotFound, std::nullopt};
    }
    return {kSecretStatusSuccess, found->second};
}

std::int32_t DemoSecretStore::add(const std::string& service, const std::string& account,
                                  const std::string& data) {
    if (!m_items.try_emplace({service, account}, data).second) {
        return kSecretStatusDuplicateItem;
    }
    return kSecretStatusSuccess;
}

std::int32_t DemoSecretStore::update(const std::string& service, const std::string& account,
                                     const std::string& data) {
    const auto found = m_items.find({service, account});
    if (found == m_items.end()) {
        return kSecretStatusItemNotFound;
    }
    found->second = data;
    return kSecretStatusSuccess;
}

std::int32_t DemoSecretStore::remove(const std::string& service, const std::string& account) {
    return m_items.erase({service, account}) > 0 ? kSecretStatusSuccess : kSecretStatusItemNotFound;
}

} // namespace quorvane
