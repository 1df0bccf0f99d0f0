// The failure statuses the Linux secret stores answer, in the keychain's numbering.
#pragma once

#include <cstdint>

namespace quorvane {

// The program tells apart only success and "not found"; the other values are
// the keychain's own for the nearest failure, so a status reads the same
// whichever platform produced it.
enum : std::int32_t {
    // The store could not be read or written (a file system error).
    kSecretStatusIO = -36,
    // The user dismissed the prompt that would have unlocked the store.
    kSecretStatusUserCanceled = -128,
    // No secret store answered: no D-Bus session, or no Secret Service on it.
    kSecretStatusNotAvailable = -25291,
    // add() found an item under the same service and account.
    kSecretStatusDuplicateItem = -25299,
    // The store is locked and could not be unlocked without the user.
    kSecretStatusInteractionNotAllowed = -25308,
    // The store answered something this program does not understand.
    kSecretStatusInternalComponent = -2070,
};

} // namespace quorvane
