#include "balance/BalanceRequest.h"

#include "balance/BalanceResponse.h"
#include "fakes/BalanceBody.h"
#include "icu/IcuTextSegmenter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

TEST(BalanceRequestTest, TheStatusIsJudgedFirstAndEveryFailureIsOneLine) {
    const std::string thumbs =
        "\xF0\x9F\x91\x8D\xF0\x9F\x8F\xBD"; // 👍🏽, one character of two code points
    struct Case {
        const char* name;
        HttpResult answer;
        std::string error; // "decoded" for a response
    };
    const Case cases[] = {
        {"401 with a long body", HttpResponse{true, 401, "Unauthorized " + std::string(200, 'x')},
         "HTTP 401 Unauthorized " + std::string(67, 'x')},
        {"excerpt counts characters", HttpResponse{true, 429, std::string(79, 'a') + thumbs + "tail"},
         "HTTP 429 " + std::string(79, 'a') + thumbs},
        {"non-UTF-8 body", HttpResponse{true, 502, "bad \xff\xfe gateway"}, "HTTP 502 "},
        // U+FEFF at the start is a character of the body like any other, on every platform.
        {"byte-order mark", HttpResponse{true, 500, "\xEF\xBB\xBF" + std::string(80, 'b')},
         "HTTP 500 \xEF\xBB\xBF" + std::string(79, 'b')},
        {"300 is an error", HttpResponse{true, 300, "{}"}, "HTTP 300 {}"},
        {"299 is a success", HttpResponse{true, 299, balanceBody({})}, "decoded"},
        {"204 without a body", HttpResponse{true, 204, ""},
         "Balance response is not valid JSON: empty input"},
        // Bodies the client cut at its size limit.
        {"cut failing body", HttpResponse{true, 503, std::string(90, 'c'), true},
         "HTTP 503 " + std::string(80, 'c')},
        {"cut inside a character", HttpResponse{true, 502, "\xC3\xA9\xC3", true}, "HTTP 502 \xC3\xA9"},
        {"cut successful body", HttpResponse{true, 200, R"({"is_available":tr)", true},
         "The response was too large."},
        {"the key in the platform's text", HttpTransportError{"Bearer sk-test refused for sk-test."},
         "[key] refused for [key]."},
        {"not HTTP", HttpResponse{false, 0, "garbage"}, "Invalid response"},
    };
    const IcuTextSegmenter segmenter;
    for (const Case& c : cases) {
        const RefreshOutcome outcome = BalanceRequest::interpret(c.answer, "sk-test", segmenter);
        EXPECT_EQ(outcome.response ? "decoded" : outcome.error, c.error) << c.name;
    }
}

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
        // Passed over inside a word, a short key is still found where it overlaps that match.
        {"==", "x=== y", "x=[key] y"},
        {"", "Connection refused", "Connection refused"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(BalanceRequest::hideKey(c.text, c.key), c.hidden) << c.key;
    }
}

const std::vector<std::string> kEntryKeys = {"currency", "total_balance", "granted_balance",
                                             "topped_up_balance"};

// A one-entry body whose entry has `key` set to the raw JSON `value`, or left out when value is empty.
std::string bodyWithEntryMember(const std::string& key, const std::string& value) {
    std::string entry;
    for (const std::string& name : kEntryKeys) {
        const std::string member = name == key ? value : "\"1.00\"";
        if (!member.empty()) {
            entry += (entry.empty() ? "{\"" : ",\"") + name + "\":" + member;
        }
    }
    return R"({"is_available":true,"balance_infos":[)" + entry + "}]}";
}

TEST(BalanceResponseTest, FailsWholeOnAnyOtherShapeSayingWhereAndWhat) {
    const std::string infos = R"({"is_available":true,"balance_infos":)";
    std::vector<std::pair<std::string, std::string>> cases = {
        {"<html>Bad Gateway</html>", "Balance response is not valid JSON: syntax error at byte 1"},
        {"[]", "Balance response is an array, expected an object"},
        {R"({"balance_infos":[]})", "Balance response: \"is_available\" is missing"},
        {R"({"is_available":null,"balance_infos":[]})",
         "Balance response: \"is_available\" is null, expected a boolean"},
        {R"({"is_available":"true","balance_infos":[]})",
         "Balance response: \"is_available\" is a string, expected a boolean"},
        {R"({"is_available":true})", "Balance response: \"balance_infos\" is missing"},
        {infos + "{}}", "Balance response: \"balance_infos\" is an object, expected an array"},
        {infos + "[1]}", "Balance response: \"balance_infos[0]\" is a number, expected an object"},
        {infos +
             R"([{"currency":"USD","total_balance":"1","granted_balance":"0","topped_up_balance":"1"},null]})",
         "Balance response: \"balance_infos[1]\" is null, expected an object"},
        {bodyWithEntryMember("currency", "true"),
         "Balance response: \"balance_infos[0].currency\" is a boolean, expected a string"},
    };
    for (const std::string& key : kEntryKeys) {
        cases.emplace_back(bodyWithEntryMember(key, ""),
                           "Balance response: \"balance_infos[0]." + key + "\" is missing");
    }
    for (const auto& [body, expected] : cases) {
        const BalanceDecoding decoding = BalanceResponse::decode(body);
        EXPECT_EQ(decoding.response ? "decoded" : decoding.error, expected) << body;
    }
}

} // namespace
} // namespace quorvane
