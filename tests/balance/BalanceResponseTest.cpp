#include "balance/BalanceResponse.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

const std::vector<std::string> kEntryKeys = {"currency", "total_balance", "granted_balance",
                                             "topped_up_balance"};

// A one-entry body whose entry has `key` set to the raw JSON `value`, or left out when value is empty.
std::string bodyWithEntryMember(const std::string& key, const std::string& value) {
    std::string entry = "{";
    const char* separator = "";
    for (const std::string& name : kEntryKeys) {
        const std::string member = name == key ? value : "\"1.00\"";
        if (!member.empty()) {
            entry += separator;
            entry += "\"" + name + "\":" + member;
            separator = ",";
        }
    }
    entry += "}";
    return R"({"is_available":true,"balance_infos":[)" + entry + "]}";
}

std::string decodeError(std::string_view body) {
    const BalanceDecoding decoding = BalanceResponse::decode(body);
    return decoding.response ? "decoded" : decoding.error;
}

TEST(BalanceResponseTest, DecodesEntriesInOrderAndIgnoresOtherMembers) {
    const BalanceResponse two{true, {{"CNY", "110.00", "10.00", "100.00"}, {"USD", "0.50", "abc", "-1"}}};
    const std::vector<std::pair<std::string, BalanceResponse>> cases = {
        {R"({"is_available":true,"balance_infos":[)"
         R"({"currency":"CNY","total_balance":"110.00","granted_balance":"10.00","topped_up_balance":"100.00"},)"
         R"({"currency":"USD","total_balance":"0.50","granted_balance":"abc","topped_up_balance":"-1"}]})",
         two},
        {R"( { "balance_infos" : [ {"topped_up_balance":"100.00","granted_balance":"10.00","extra":{"x":[1]},)"
         R"("total_balance":"110.00","currency":"CNY"},)"
         R"({"currency":"USD","total_balance":"0.50","granted_balance":"abc","topped_up_balance":"-1","n":null}],)"
         R"("is_available" : true, "request_id": 12.5, "note": null } )",
         two},
        // Numbers no double can hold, in members nothing reads.
        {R"({"x":1e400,"is_available":true,"balance_infos":[)"
         R"({"currency":"CNY","total_balance":"110.00","granted_balance":"10.00","topped_up_balance":"100.00",)"
         R"("n":)" +
             std::string(309, '7') +
             R"(},)"
             R"({"currency":"USD","total_balance":"0.50","granted_balance":"abc","topped_up_balance":"-1"}]})",
         two},
        {R"({"is_available":false,"balance_infos":[]})", BalanceResponse{false, {}}},
        {R"({"is_available":true,"balance_infos":[{"currency":"","total_balance":"",)"
         R"("granted_balance":"","topped_up_balance":""}]})",
         BalanceResponse{true, {{"", "", "", ""}}}},
    };
    for (const auto& [body, expected] : cases) {
        const BalanceDecoding decoding = BalanceResponse::decode(body);
        ASSERT_TRUE(decoding.response) << body << "\n" << decoding.error;
        EXPECT_EQ(*decoding.response, expected) << body;
        EXPECT_EQ(decoding.error, "");
    }
}

TEST(BalanceResponseTest, EveryEntryMemberMustBeAString) {
    for (const std::string& key : kEntryKeys) {
        const std::string path = "Balance response: \"balance_infos[0]." + key + "\" ";
        const std::vector<std::pair<std::string, std::string>> cases = {
            {"", path + "is missing"},
            {"null", path + "is null, expected a string"},
            {"110.5", path + "is a number, expected a string"},
            {"true", path + "is a boolean, expected a string"},
            {"[\"1\"]", path + "is an array, expected a string"},
            {"{}", path + "is an object, expected a string"},
        };
        for (const auto& [value, expected] : cases) {
            EXPECT_EQ(decodeError(bodyWithEntryMember(key, value)), expected) << key << " = " << value;
        }
    }
}

TEST(BalanceResponseTest, FailsWholeOnAnyOtherShape) {
    const std::string goodEntry =
        R"({"currency":"USD","total_balance":"1","granted_balance":"0","topped_up_balance":"1"})";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "Balance response is not valid JSON: empty input"},
        {R"({"is_available":true,"balance_infos":[)",
         "Balance response is not valid JSON: unexpected end of input"},
        {R"({"is_available":true,})", "Balance response is not valid JSON: syntax error at byte 22"},
        {"<html>Bad Gateway</html>", "Balance response is not valid JSON: syntax error at byte 1"},
        {"{\"is_available\":true,\"balance_infos\":[{\"currency\":\"US\xFF\"}]}",
         "Balance response is not valid JSON: not valid UTF-8"},
        {"[]", "Balance response is an array, expected an object"},
        {"null", "Balance response is null, expected an object"},
        {"\"ok\"", "Balance response is a string, expected an object"},
        {R"({"balance_infos":[]})", "Balance response: \"is_available\" is missing"},
        {R"({"is_available":null,"balance_infos":[]})",
         "Balance response: \"is_available\" is null, expected a boolean"},
        {R"({"is_available":"true","balance_infos":[]})",
         "Balance response: \"is_available\" is a string, expected a boolean"},
        {R"({"is_available":1,"balance_infos":[]})",
         "Balance response: \"is_available\" is a number, expected a boolean"},
        {R"({"is_available":true})", "Balance response: \"balance_infos\" is missing"},
        {R"({"is_available":true,"balance_infos":null})",
         "Balance response: \"balance_infos\" is null, expected an array"},
        {R"({"is_available":true,"balance_infos":{}})",
         "Balance response: \"balance_infos\" is an object, expected an array"},
        {R"({"is_available":true,"balance_infos":[1]})",
         "Balance response: \"balance_infos[0]\" is a number, expected an object"},
        {R"({"is_available":true,"balance_infos":[)" + goodEntry + ",null]}",
         "Balance response: \"balance_infos[1]\" is null, expected an object"},
        {R"({"is_available":true,"balance_infos":[)" + goodEntry + R"(,{"currency":"CNY"}]})",
         "Balance response: \"balance_infos[1].total_balance\" is missing"},
    };
    for (const auto& [body, expected] : cases) {
        EXPECT_EQ(decodeError(body), expected) << body;
    }
}

TEST(BalanceResponseTest, ErrorsDoNotQuoteTheBody) {
    const std::string secret = "sk-live-0123456789";
    for (const std::string& body :
         {"{\"is_available\":\"" + secret + "\",\"balance_infos\":[]}", secret, "{\"" + secret + "\":1",
          "{\"balance_infos\":[],\"x\":\"" + secret + "\"}"}) {
        const std::string error = decodeError(body);
        EXPECT_NE(error, "decoded");
        EXPECT_EQ(error.find("sk-"), std::string::npos) << error;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    }
}

} // namespace
} // namespace quorvane
