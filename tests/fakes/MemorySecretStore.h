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
        m_calls.push_back("copy " + service + "/" + account);
        if (m_copyStatus) {
            return {*m_copyStatus, m_copyData};
        }
        auto it = m_items.find({service, account});
        if (it == m_items.end()) {
            return {kSecretStatusItemNotFound, std::nullopt};
        }
        if (m_returnNonData) {
            return {kSecretStatusSuccess, std::nullopt};
        }
        return {kSecretStatusSuccess, it->second};
    }
    std::int32_t add(const std::string& service, const std::string& account,
                     const std::string& data) override {
        m_calls.push_back("add " + service + "/" + account);
        if (m_addStatus) {
            return *m_addStatus;
        }
        m_items[{service, account}] = data;
        return kSecretStatusSuccess;
    }
    std::int32_t update(const std::string& service, const std::string& account,
                        const std::string& data) override {
        m_calls.push_back("update " + service + "/" + account);
        if (m_updateStatus) {
            return *m_updateStatus;
        }
        auto it = m_items.find({service, account});
        if (it == m_items.end()) {
            return kSecretStatusItemNotFound;
        }
        it->second = data;
        return kSecretStatusSuccess;
    }
    std::int32_t remove(const std::string& service, const std::string& account) override {
        m_calls.push_back("delete " + service + "/" + account);
        if (m_removeStatus) {
            return *m_removeStatus;
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
        m_copyStatus = status;
        m_copyData = std::move(data);
    }
    void failAdd(std::int32_t status) { m_addStatus = status; }
    void failUpdate(std::int32_t status) { m_updateStatus = status; }
    void failRemove(std::int32_t status) { m_removeStatus = status; }
    // The store answers success but with a result that is not data.
    void returnNonData() { m_returnNonData = true; }

    const std::vector<std::string>& calls() const { return m_calls; }

private:
    std::map<std::pair<std::string, std::string>, std::string> m_items;
    std::vector<std::string> m_calls;
    std::optional<std::int32_t> m_copyStatus;
    std::optional<std::string> m_copyData;
    std::optional<std::int32_t> m_addStatus;
    std::optional<std::int32_t> m_updateStatus;
    std::optional<std::int32_t> m_removeStatus;
    bool m_returnNonData = false;
};

} // namespace quorvane
