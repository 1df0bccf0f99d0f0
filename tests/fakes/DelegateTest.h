// The fixture of the tests that drive the delegate through its commands, on the fakes.
#pragma once

#include "app/AppDelegate.h"
#include "fakes/BalanceBody.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvane {

// The delegate is made but not launched: each test starts it as the program
// would, or not at all.
class DelegateTest : public ::testing::Test {
protected:
    // One refresh, with a key stored, answered with `status` and `body`.
    void refreshWith(int status, const std::string& body) {
        fake.storeKey("sk-test");
        delegate.refreshClicked();
        fake.http.respond(status, body);
    }

    FakePlatform fake;
    AppDelegate delegate{fake.platform()};
};

} // namespace quorvane
