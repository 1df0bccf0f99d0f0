#include "keychain/KeychainStore.h"

#include "fakes/MemorySecretStore.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

const std::string kService = "Quorvane";
const std::string kAccount = "DeepSeekAPIKey";

TEST(KeychainStoreTest, SaveUpdatesFirstAndAddsOnlyWhenNoItemExists) {
    MemorySecretStore store;
    KeychainStore keychain(store);
    EXPECT_EQ(keychain.service(), kService);
    EXPECT_EQ(keychain.account(), kAccount);

    keychain.save("sk-first");
    keychain.save("sk-second");

    EXPECT_EQ(store.calls(),
              (std::vector<std::string>{"update Quorvane/DeepSeekAPIKey", "add Quorvane/DeepSeekAPIKey",
                                        "update Quorvane/DeepSeekAPIKey"}));
    EXPECT_EQ(store.itemCount(), 1u);
    EXPECT_EQ(keychain.read(), "sk-second");
}

TEST(KeychainStoreTest, SaveAddsNothingWhenTheUpdateFailsForAnotherReason) {
    struct Case {
        std::int32_t updateStatus;
        std::vector<std::string> calls;
    };
    const Case cases[] = {
        {-25308, {"update Quorvane/DeepSeekAPIKey"}}, // interaction not allowed
        {-25293, {"update Quorvane/DeepSeekAPIKey"}}, // authentication failed
        {kSecretStatusItemNotFound, {"update Quorvane/DeepSeekAPIKey", "add Quorvane/DeepSeekAPIKey"}},
    };
    for (const Case& c : cases) {
        MemorySecretStore store;
        store.failUpdate(c.updateStatus);
        KeychainStore keychain(store);
        keychain.save("sk-key");
        EXPECT_EQ(store.calls(), c.calls) << c.updateStatus;
    }
}

TEST(KeychainStoreTest, AFailingAddLeavesTheStoreAsItWas) {
    MemorySecretStore store;
    store.failAdd(-34018);
    KeychainStore keychain(store);
    keychain.save("sk-key");
    EXPECT_EQ(store.itemCount(), 0u);
    EXPECT_EQ(keychain.read(), std::nullopt);
}

TEST(KeychainStoreTest, ReadGivesNothingForEveryFailure) {
    struct Case {
        const char* name;
        std::int32_t status;
        std::optional<std::string> data;
    };
    const Case cases[] = {
        {"item not found", kSecretStatusItemNotFound, std::nullopt},
        {"other failure with data", -25308, std::string("sk-key")},
        {"success without a result", kSecretStatusSuccess, std::nullopt},
        {"bytes that are not UTF-8", kSecretStatusSuccess, std::string("sk-\xff\xfe")},
        {"truncated UTF-8 sequence", kSecretStatusSuccess, std::string("sk-\xe2\x82")},
    };
    for (const Case& c : cases) {
        MemorySecretStore store;
        store.failCopy(c.status, c.data);
        EXPECT_EQ(KeychainStore(store).read(), std::nullopt) << c.name;
    }

    MemorySecretStore nonData;
    nonData.putItem(kService, kAccount, "sk-key");
    nonData.returnNonData();
    EXPECT_EQ(KeychainStore(nonData).read(), std::nullopt) << "a result that is not data";
}

TEST(KeychainStoreTest, ReadGivesStoredTextUnchanged) {
    const std::string values[] = {"", "  sk-with blanks \n", "sk-ключ-🔑"};
    for (const std::string& value : values) {
        MemorySecretStore store;
        KeychainStore keychain(store);
        keychain.save(value);
        EXPECT_EQ(store.item(kService, kAccount), value);
        EXPECT_EQ(keychain.read(), value);
    }
}

TEST(KeychainStoreTest, DeleteRemovesTheItemAndIsSilentWhenThereIsNone) {
    MemorySecretStore store;
    KeychainStore keychain(store);
    keychain.deleteItem();
    keychain.save("sk-key");
    keychain.deleteItem();
    EXPECT_EQ(keychain.read(), std::nullopt);
    EXPECT_EQ(store.itemCount(), 0u);

    store.putItem(kService, kAccount, "sk-kept");
    store.failRemove(-25308);
    keychain.deleteItem();
    EXPECT_EQ(keychain.read(), "sk-kept");
}

} // namespace
} // namespace quorvane
