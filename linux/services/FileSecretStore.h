// A secret store in one file that only the user can read, for machines without a Secret Service.
#pragma once

#include "platform/SecretStore.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// The file holds every item (service, account, value) as length-prefixed
// fields, so a value may hold any bytes. It is mode 0600 in a 0700 folder and
// is only ever replaced whole: each change writes a new file next to it and
// renames it over the old, so a crash leaves either the old or the new items,
// never a mix and never none.
//
// A file that cannot be parsed reads as holding no items. Nothing is written
// over it: the first add() moves it aside to "<file>.corrupt" (or
// "<file>.corrupt.2", ... when that name is taken) and starts a new file, so
// whatever it held can still be recovered by hand. update() and remove() find
// no item in it and leave it where it is.
class FileSecretStore : public SecretStore {
public:
    explicit FileSecretStore(std::string filePath);

    // $XDG_CONFIG_HOME/quorvane/secrets, or ~/.config/quorvane/secrets when
    // XDG_CONFIG_HOME is unset or not absolute; read from the environment on
    // every call.
    static std::string defaultPath();

    const std::string& filePath() const { return m_filePath; }

    SecretCopyResult copy(const std::string& service, const std::string& account) override;
    // kSecretStatusDuplicateItem when the item exists.
    std::int32_t add(const std::string& service, const std::string& account,
                     const std::string& data) override;
    std::int32_t update(const std::string& service, const std::string& account,
                        const std::string& data) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;

private:
    struct Item {
        std::string service;
        std::string account;
        std::string value;
    };
    enum class Load { Read, Missing, Corrupt, Failed };

    Load load(std::vector<Item>& items) const;
    std::int32_t save(const std::vector<Item>& items) const;
    std::int32_t moveCorruptFileAside() const;
    bool ensureFolder() const;

    std::string m_filePath;
};

} // namespace quorvane
