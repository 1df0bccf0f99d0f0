#include "balance/BalanceResponse.h"

#include "json/JsonReader.h"
#include "json/JsonValue.h"

#include <utility>

namespace quorvane {

namespace {

constexpr std::string_view kErrorPrefix = "Balance response";

std::string kindText(JsonValue::Kind kind) {
    return std::string(JsonValue::kindName(kind));
}

std::string missing(const std::string& path) {
    return std::string(kErrorPrefix) + ": \"" + path + "\" is missing";
}

std::string wrongKind(const std::string& path, JsonValue::Kind found, JsonValue::Kind wanted) {
    return std::string(kErrorPrefix) + ": \"" + path + "\" is " + kindText(found) + ", expected " +
           kindText(wanted);
}

// The member's value when it is there with the wanted kind; otherwise nothing,
// with error saying what was found instead.
const JsonValue* member(const JsonValue& object, std::string_view key, JsonValue::Kind wanted,
                        const std::string& path, std::string& error) {
    const JsonValue* value = object.find(key);
    if (value == nullptr) {
        error = missing(path);
        return nullptr;
    }
    if (value->kind() != wanted) {
        error = wrongKind(path, value->kind(), wanted);
        return nullptr;
    }
    return value;
}

std::optional<BalanceInfo> decodeInfo(const JsonValue& entry, const std::string& path, std::string& error) {
    if (entry.kind() != JsonValue::Kind::Object) {
        error = wrongKind(path, entry.kind(), JsonValue::Kind::Object);
        return std::nullopt;
    }
    BalanceInfo info;
    const std::pair<const char*, std::string*> fields[] = {
        {"currency", &info.currency},
        {"total_balance", &info.totalBalance},
        {"granted_balance", &info.grantedBalance},
        {"topped_up_balance", &info.toppedUpBalance},
    };
    for (const auto& [key, field] : fields) {
        const JsonValue* value = member(entry, key, JsonValue::Kind::String, path + "." + key, error);
        if (value == nullptr) {
            return std::nullopt;
        }
        *field = value->text();
    }
    return info;
}

BalanceDecoding failure(std::string error) {
    return BalanceDecoding{std::nullopt, std::move(error)};
}

} // namespace

BalanceDecoding BalanceResponse::decode(std::string_view body) {
    JsonReader::Result parsed = JsonReader::parse(body);
    if (!parsed.value) {
        return failure(std::string(kErrorPrefix) + " is not valid JSON: " + parsed.error);
    }
    const JsonValue& root = *parsed.value;
    if (root.kind() != JsonValue::Kind::Object) {
        return failure(std::string(kErrorPrefix) + " is " + kindText(root.kind()) + ", expected an object");
    }
    std::string error;
    const JsonValue* available =
        member(root, "is_available", JsonValue::Kind::Boolean, "is_available", error);
    if (available == nullptr) {
        return failure(std::move(error));
    }
    const JsonValue* infos = member(root, "balance_infos", JsonValue::Kind::Array, "balance_infos", error);
    if (infos == nullptr) {
        return failure(std::move(error));
    }
    BalanceResponse response;
    response.isAvailable = available->boolValue();
    for (std::size_t i = 0; i < infos->elements().size(); ++i) {
        const std::string path = "balance_infos[" + std::to_string(i) + "]";
        std::optional<BalanceInfo> info = decodeInfo(infos->elements()[i], path, error);
        if (!info) {
            return failure(std::move(error));
        }
        response.balanceInfos.push_back(std::move(*info));
    }
    return BalanceDecoding{std::move(response), {}};
}

} // namespace quorvane
