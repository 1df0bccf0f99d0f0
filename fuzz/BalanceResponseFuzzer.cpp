// Any body the endpoint might send: the decode either gives a response that
// survives being written out and read again, or one line that says what was
// wrong in the program's own words, never in the body's.
#include "FuzzAssert.h"
#include "balance/BalanceResponse.h"
#include "json/JsonValue.h"
#include "json/JsonWriter.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {
namespace {

std::string bodyOf(const BalanceResponse& response) {
    std::vector<JsonValue> infos;
    for (const BalanceInfo& info : response.balanceInfos) {
        infos.push_back(JsonValue::fromMembers({
            {"currency", JsonValue::fromString(info.currency)},
            {"total_balance", JsonValue::fromString(info.totalBalance)},
            {"granted_balance", JsonValue::fromString(info.grantedBalance)},
            {"topped_up_balance", JsonValue::fromString(info.toppedUpBalance)},
        }));
    }
    return JsonWriter::write(JsonValue::fromMembers({
        {"is_available", JsonValue::fromBool(response.isAvailable)},
        {"balance_infos", JsonValue::fromElements(std::move(infos))},
    }));
}

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

// Every word of an error must be one the program itself says: the body's own
// text showing up in a message is an echo, whatever the wording around it.
// Digits (byte positions, indexes) and punctuation carry nothing of the body.
bool speaksOnlyOwnWords(std::string_view error) {
    static const std::set<std::string_view> kVocabulary = {
        "Balance",
        "response",
        "is",
        "not",
        "valid",
        "JSON",
        "empty",
        "input",
        "UTF",
        "syntax",
        "error",
        "at",
        "byte",
        "number",
        "out",
        "of",
        "range",
        "unexpected",
        "end",
        "nested",
        "deeper",
        "than",
        "levels",
        "expected",
        "a",
        "an",
        "null",
        "boolean",
        "string",
        "array",
        "object",
        "missing",
        "is_available",
        "balance_infos",
        "currency",
        "total_balance",
        "granted_balance",
        "topped_up_balance",
    };
    std::size_t i = 0;
    while (i < error.size()) {
        const char c = error[i];
        if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) > 0x7E) {
            return false;
        }
        if (!isWordCharacter(c)) {
            ++i;
            continue;
        }
        std::size_t end = i;
        while (end < error.size() && isWordCharacter(error[end])) {
            ++end;
        }
        if (kVocabulary.count(error.substr(i, end - i)) == 0) {
            return false;
        }
        i = end;
    }
    return true;
}

} // namespace
} // namespace quorvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvane;
    const std::string_view body(reinterpret_cast<const char*>(data), size);
    const BalanceDecoding decoding = BalanceResponse::decode(body);
    if (!decoding.response) {
        fuzzAssert(!decoding.error.empty(), "a failed decode says why");
        fuzzAssert(speaksOnlyOwnWords(decoding.error), "an error is one line of the program's own words");
        return 0;
    }
    fuzzAssert(decoding.error.empty(), "a decoded body carries no error");
    const std::string rewritten = bodyOf(*decoding.response);
    const BalanceDecoding again = BalanceResponse::decode(rewritten);
    fuzzAssert(again.response.has_value(), "a decoded response, written out, decodes again");
    fuzzAssert(*again.response == *decoding.response, "a decoded response, written out, reads back the same");
    return 0;
}
