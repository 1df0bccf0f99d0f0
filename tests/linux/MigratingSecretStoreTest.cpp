#include "services/MigratingSecretStore.h"

#include "fakes/MemorySecretStore.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace quorvane {
namespace {

const std::string kService = "Quorvane";
const std::string kAccount = "DeepSeekAPIKey";

// The store over two in-memory stores that the test still reaches.
struct Stores {
    Stores() {
        auto serviceStore = std::make_unique<MemorySecretStore>();
        auto fileStore = std::make_unique<MemorySecretStore>();
        service = serviceStore.get();
        file = fileStore.get();
        store = std::make_unique<MigratingSecretStore>(std::move(serviceStore), std::move(fileStore));
    }

    MemorySecretStore* service;
    MemorySecretStore* file;
    std::unique_ptr<MigratingSecretStore> store;
};

TEST(MigratingSecretStoreTest, AKeyTheServiceWillNotTakeStaysInTheFileAndIsStillRead) {
    Stores refused;
    refused.file->putItem(kService, kAccount, "sk-file");
    refused.service->failAdd(-128);
    EXPECT_EQ(refused.store->copy(kService, kAccount).data, "sk-file");
    EXPECT_EQ(refused.file->item(kService, kAccount), "sk-file");

    // A service that cannot say what it holds leaves the file alone too.
    Stores locked;
    locked.file->putItem(kService, kAccount, "sk-file");
    locked.service->failCopy(-25293);
    EXPECT_EQ(locked.store->copy(kService, kAccount).data, "sk-file");
    EXPECT_EQ(locked.service->calls(),
              (std::vector<std::string>{"copy Quorvane/DeepSeekAPIKey", "copy Quorvane/DeepSeekAPIKey"}));
}

TEST(MigratingSecretStoreTest, SavingKeepsTheKeyInTheServiceAloneAndRemovingClearsBoth) {
    Stores stores;
    stores.file->putItem(kService, kAccount, "sk-file");
    stores.service->failAdd(-128);
    EXPECT_EQ(stores.store->add(kService, kAccount, "sk-new"), -128);
    EXPECT_EQ(stores.file->item(kService, kAccount), "sk-file") << "a failed save loses nothing";

    stores.service->putItem(kService, kAccount, "sk-service");
    EXPECT_EQ(stores.store->update(kService, kAccount, "sk-newer"), kSecretStatusSuccess);
    EXPECT_EQ(stores.service->item(kService, kAccount), "sk-newer");
    EXPECT_EQ(stores.file->itemCount(), 0u);

    stores.file->putItem(kService, kAccount, "sk-stray");
    EXPECT_EQ(stores.store->remove(kService, kAccount), kSecretStatusSuccess);
    EXPECT_EQ(stores.service->itemCount() + stores.file->itemCount(), 0u);
    EXPECT_EQ(stores.store->remove(kService, kAccount), kSecretStatusItemNotFound);
    stores.file->failRemove(-61);
    EXPECT_EQ(stores.store->remove(kService, kAccount), -61);
}

} // namespace
} // namespace quorvane
