#include "balance/BalanceRequest.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvane {
namespace {

TEST(BalanceRequestTest, HidesTheKeyAndOnlyTheKeyFromThePlatformsText) {
    const std::string longKey = "sk-0123456789abcdef";
    const struct {
        std::string key;
        std::string text;
        std::string hidden;
    } cases[] = {
        {longKey, "Server replied: Bearer " + longKey + " is not valid",
         "Server replied: [key] is not valid"},
        // A long key is hidden wherever it stands, even inside a word.
        {longKey, "x" + longKey + "x and " + longKey, "x[key]x and [key]"},
        // A short one only as a word of its own: the rest of the text stays.
        {"a", "Host api.deepseek.com not found", "Host api.deepseek.com not found"},
        {"refused", "Connection refused", "Connection [key]"},
        {"refused", "Connection refused-twice", "Connection refused-twice"},
        {"", "Connection refused", "Connection refused"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(BalanceRequest::hideKey(c.text, c.key), c.hidden) << c.key;
    }
}

} // namespace
} // namespace quorvane
