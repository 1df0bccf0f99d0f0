#include "services/SecretServiceStore.h"

#include "services/SecretStatus.h"

#include <libsecret/secret.h>

#include <gio/gio.h>
#include <memory>

namespace quorvane {

namespace {

const SecretSchema* schema() {
    // The name is written on new items for other tools to show; lookups match
    // on the two attributes only.
    static const SecretSchema kSchema = {
        "org.quorvane.GenericPassword",
        SECRET_SCHEMA_DONT_MATCH_NAME,
        {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
         {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
         {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
        0,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
    };
    return &kSchema;
}

struct HashTableUnref {
    void operator()(GHashTable* table) const { g_hash_table_unref(table); }
};
struct SecretValueUnref {
    void operator()(SecretValue* value) const { secret_value_unref(value); }
};
using Attributes = std::unique_ptr<GHashTable, HashTableUnref>;
using Value = std::unique_ptr<SecretValue, SecretValueUnref>;

// The table borrows the strings: it must not outlive the call it is made for.
Attributes attributes(const std::string& service, const std::string& account) {
    Attributes table(g_hash_table_new(g_str_hash, g_str_equal));
    g_hash_table_insert(table.get(), const_cast<char*>("service"), const_cast<char*>(service.c_str()));
    g_hash_table_insert(table.get(), const_cast<char*>("account"), const_cast<char*>(account.c_str()));
    return table;
}

Value newValue(const std::string& data) {
    return Value(secret_value_new(data.data(), static_cast<gssize>(data.size()), "text/plain"));
}

// Takes the error and frees it: its message is never looked at, let alone
// passed on.
std::int32_t statusFor(GError* error) {
    std::int32_t status = kSecretStatusInternalComponent;
    if (error->domain == SECRET_ERROR) {
        status = error->code == SECRET_ERROR_IS_LOCKED ? kSecretStatusInteractionNotAllowed
                                                       : kSecretStatusInternalComponent;
    } else if (error->domain == G_IO_ERROR && error->code == G_IO_ERROR_CANCELLED) {
        status = kSecretStatusUserCanceled;
    } else if (error->domain == G_DBUS_ERROR || error->domain == G_IO_ERROR) {
        // No bus, no provider on it, or one that stopped answering.
        status = kSecretStatusNotAvailable;
    }
    g_error_free(error);
    return status;
}

} // namespace

SecretCopyResult SecretServiceStore::copy(const std::string& service, const std::string& account) {
    GError* error = nullptr;
    Value value(
        secret_password_lookupv_binary_sync(schema(), attributes(service, account).get(), nullptr, &error));
    if (error != nullptr) {
        return {statusFor(error), std::nullopt};
    }
    if (!value) {
        return {kSecretStatusItemNotFound, std::nullopt};
    }
    gsize length = 0;
    const gchar* bytes = secret_value_get(value.get(), &length);
    return {kSecretStatusSuccess, std::string(bytes, length)};
}

std::int32_t SecretServiceStore::add(const std::string& service, const std::string& account,
                                     const std::string& data) {
    // Storing replaces an existing item; a keychain's add refuses instead.
    SecretCopyResult existing = copy(service, account);
    if (existing.status == kSecretStatusSuccess) {
        return kSecretStatusDuplicateItem;
    }
    if (existing.status != kSecretStatusItemNotFound) {
        return existing.status;
    }
    return store(service, account, data);
}

std::int32_t SecretServiceStore::update(const std::string& service, const std::string& account,
                                        const std::string& data) {
    // Each matching item takes the new value in place, keeping its label and
    // attributes: storing anew would make a second item next to one that some
    // other tool made without this schema's name.
    GError* error = nullptr;
    GList* items = secret_service_search_sync(
        nullptr, schema(), attributes(service, account).get(),
        static_cast<SecretSearchFlags>(SECRET_SEARCH_ALL | SECRET_SEARCH_UNLOCK), nullptr, &error);
    if (error != nullptr) {
        return statusFor(error);
    }
    if (items == nullptr) {
        return kSecretStatusItemNotFound;
    }
    Value value(newValue(data));
    std::int32_t status = kSecretStatusSuccess;
    for (GList* entry = items; entry != nullptr && status == kSecretStatusSuccess; entry = entry->next) {
        auto* item = static_cast<SecretItem*>(entry->data);
        if (secret_item_get_locked(item)) {
            // The unlock prompt was dismissed or could not be shown.
            status = kSecretStatusInteractionNotAllowed;
        } else if (!secret_item_set_secret_sync(item, value.get(), nullptr, &error)) {
            status = error != nullptr ? statusFor(error) : kSecretStatusInternalComponent;
        }
    }
    g_list_free_full(items, g_object_unref);
    return status;
}

std::int32_t SecretServiceStore::remove(const std::string& service, const std::string& account) {
    GError* error = nullptr;
    gboolean removed =
        secret_password_clearv_sync(schema(), attributes(service, account).get(), nullptr, &error);
    if (error != nullptr) {
        return statusFor(error);
    }
    return removed ? kSecretStatusSuccess : kSecretStatusItemNotFound;
}

std::int32_t SecretServiceStore::store(const std::string& service, const std::string& account,
                                       const std::string& data) {
    Value value(newValue(data));
    std::string label = service + " " + account;
    GError* error = nullptr;
    gboolean stored = secret_password_storev_binary_sync(schema(), attributes(service, account).get(),
                                                         SECRET_COLLECTION_DEFAULT, label.c_str(),
                                                         value.get(), nullptr, &error);
    if (error != nullptr) {
        return statusFor(error);
    }
    if (!stored) {
        return kSecretStatusInternalComponent;
    }
    return kSecretStatusSuccess;
}

} // namespace quorvane
