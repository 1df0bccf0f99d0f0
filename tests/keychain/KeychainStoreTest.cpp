#include "keychain/KeychainStore.h"

#include "fakes/MemorySecretStore.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

const std::string kItem = "Quorvane/DeepSeekAPIKey";

TEST(KeychainStoreTest, SaveUpdatesTheOneItemAndAddsItOnlyWhenThereIsNone) {
    MemorySecretStore store;
    KeychainStore keychain(store);
    keychain.save("sk-first");
    keychain.save("  sk-ключ-🔑 \n");
    EXPECT_EQ(store.calls(),
              (std::vector<std::string>{"update " + kItem, "add " + kItem, "update " + kItem}));
    EXPECT_EQ(store.itemCount(), 1u);
    EXPECT_EQ(keychain.read(), "  sk-ключ-🔑 \n");

    // An update refused for any other reason (a locked keychain) adds no second item.
    MemorySecretStore locked;
    locked.failUpdate(-25308);
    KeychainStore(locked).save("sk-key");
    EXPECT_EQ(locked.calls(), std::vector<std::string>{"update " + kItem});

    keychain.deleteItem();
    EXPECT_EQ(store.itemCount(), 0u);
    EXPECT_EQ(store.calls().back(), "delete " + kItem);
}

TEST(KeychainStoreTest, ReadGivesNothingForEveryFailure) {
    struct Case {
        const char* name;
        std::int32_t status;
        std::optional<std::string> data;
        std::optional<std::string> read;
    };
    const Case cases[] = {
        {"an empty key", kSecretStatusSuccess, std::string(), std::string()},
        {"a failure with data", -25308, std::string("sk-key"), std::nullopt},
        {"success without a result", kSecretStatusSuccess, std::nullopt, std::nullopt},
        {"truncated UTF-8", kSecretStatusSuccess, std::string("sk-\xe2\x82"), std::nullopt},
    };
    for (const Case& c : cases) {
        MemorySecretStore store;
        store.failCopy(c.status, c.data);
        EXPECT_EQ(KeychainStore(store).read(), c.read) << c.name;
    }
}

} // namespace
} // namespace quorvane
