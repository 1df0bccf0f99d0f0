// The one API key, kept as a generic-password item in the system's secret store.
#pragma once

#include "platform/SecretStore.h"

#include <optional>
#include <string>

namespace quorvane {

// Reports nothing: a read that fails for any reason is the same as no key,
// and saving or deleting is fire-and-forget. Nothing is cached, so every read
// asks the store again.
class KeychainStore {
public:
    explicit KeychainStore(SecretStore& store);

    const std::string& service() const { return m_service; }
    const std::string& account() const { return m_account; }

    // The stored key, or nothing when the store has none, fails, returns no
    // data, or holds bytes that are not UTF-8. An empty item reads as "".
    std::optional<std::string> read() const;
    // Updates the item in place; adds one only when the update finds none.
    void save(const std::string& key);
    void deleteItem();

private:
    SecretStore& m_store;
    const std::string m_service = "Quorvane";
    const std::string m_account = "DeepSeekAPIKey";
};

} // namespace quorvane
