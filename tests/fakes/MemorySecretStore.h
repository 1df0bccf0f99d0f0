// A secret store in memory that records every call and fails on demand.
#pragma once

#include "platform/SecretStore.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {

class MemorySecretStore : public SecretStore {
public:
    SecretCopyResult copy(const std::string& service, const std::string& account) override {
        if (const auto failure = call("copy", service, account)) {
            return {*failure, m_copyData};
        }
        std::optional<std::string> stored = item(service, account);
        return {stored ? kSecretStatusSuccess : kSecretStatusItemNotFound, std::move(stored)};
    }
    std::int32_t add(const std::string& service, const std::string& account,
                     const std::string& data) override {
        if (const auto failure = call("add", service, account)) {
            return *failure;
        }
        m_items[{service, account}] = data;
        return kSecretStatusSuccess;
    }
    std::int32_t update(const std::string& service, const std::string& account,
                        const std::string& data) override {
        if (const auto failure = call("update", service, account)) {
            return *failure;
        }
        if (!item(service, account)) {
            return kSecretStatusItemNotFound;
        }
        m_items[{service, account}] = data;
        return kSecretStatusSuccess;
    }
    std::int32_t remove(const std::string& service, const std::string& account) override {
        if (const auto failure = call("delete", service, account)) {
            return *failure;
        }
        return m_items.erase({service, account}) ? kSecretStatusSuccess : kSecretStatusItemNotFound;
    }

    void putItem(const std::string& service, const std::string& account, const std::string& data) {
        m_items[{service, account}] = data;
    }
    std::optional<std::string> item(const std::string& service, const std::string& account) const {
        auto it = m_items.find({service, account});
        return it == m_items.end() ? std::nullopt : std::optional<std::string>(it->second);
    }
    std::size_t itemCount() const { return m_items.size(); }

    // Failures on demand: the status each call answers instead of doing its work.
    void failCopy(std::int32_t status, std::optional<std::string> data = std::nullopt) {
        m_failures["copy"] = status;
        m_copyData = std::move(data);
    }
    void failAdd(std::int32_t status) { m_failures["add"] = status; }
    void failUpdate(std::int32_t status) { m_failures["update"] = status; }
    void failRemove(std::int32_t status) { m_failures["delete"] = status; }

    // "copy SERVICE/ACCOUNT", "add ...", "update ...", "delete ...", in call order.
    const std::vector<std::string>& calls() const { return m_calls; }

private:
    std::optional<std::int32_t> call(const std::string& name, const std::string& service,
                                     const std::string& account) {
        m_calls.push_back(name + " " + service + "/" + account);
        auto it = m_failures.find(name);
        return it == m_failures.end() ? std::nullopt : std::optional<std::int32_t>(it->second);
    }

    std::map<std::pair<std::string, std::string>, std::string> m_items;
    std::vector<std::string> m_calls;
    std::map<std::string, std::int32_t> m_failures;
    std::optional<std::string> m_copyData;
};

} // namespace quorvane
