#include "keychain/KeychainStore.h"

#include "values/Utf8.h"

namespace quorvane {

KeychainStore::KeychainStore(SecretStore& store)
    : m_store(store) {}

std::optional<std::string> KeychainStore::read() const {
    SecretCopyResult result = m_store.copy(m_service, m_account);
    if (result.status != kSecretStatusSuccess || !result.data || !isValidUtf8(*result.data)) {
        return std::nullopt;
    }
    return std::move(*result.data);
}

void KeychainStore::save(const std::string& key) {
    // An existing item keeps its identity (and any access the user granted
    // to it); a second item is never created next to it.
    if (m_store.update(m_service, m_account, key) == kSecretStatusItemNotFound) {
        m_store.add(m_service, m_account, key);
    }
}

void KeychainStore::deleteItem() {
    m_store.remove(m_service, m_account);
}

} // namespace quorvane
