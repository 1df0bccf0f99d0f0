// The demo's secret store: items held in memory for one run, never in the user's keyring or files.
#pragma once

#include "platform/SecretStore.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace quorvane {

// Answers as the keychain does: add() refuses an existing item, update() and
// remove() report one that is missing.
class DemoSecretStore : public SecretStore {
public:
    SecretCopyResult copy(const std::string& service, const std::string& account) override;
    std::int32_t add(const std::string& service, const std::string& account,
                     const std::string& data) override;
    std::int32_t update(const std::string& service, const std::string& account,
                        const std::string& data) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;

private:
    std::map<std::pair<std::string, std::string>, std::string> m_items;
};

} // namespace quorvane
