#include "json/JsonValue.h"

#include <utility>

namespace quorvane {

JsonValue JsonValue::fromBool(bool value) {
    JsonValue result;
    result.m_kind = Kind::Boolean;
    result.m_bool = value;
    return result;
}

JsonValue JsonValue::fromNumberText(std::string text) {
    JsonValue result;
    result.m_kind = Kind::Number;
    result.m_text = std::move(text);
    return result;
}

JsonValue JsonValue::fromString(std::string text) {
    JsonValue result;
    result.m_kind = Kind::String;
    result.m_text = std::move(text);
    return result;
}

JsonValue JsonValue::fromElements(std::vector<JsonValue> elements) {
    JsonValue result;
    result.m_kind = Kind::Array;
    result.m_elements = std::move(elements);
    return result;
}

JsonValue JsonValue::fromMembers(std::vector<Member> members) {
    JsonValue result;
    result.m_kind = Kind::Object;
    result.m_members = std::move(members);
    return result;
}

const JsonValue* JsonValue::find(std::string_view key) const {
    for (auto it = m_members.rbegin(); it != m_members.rend(); ++it) {
        if (it->key == key) {
            return &it->value;
        }
    }
    return nullptr;
}

std::string_view JsonValue::kindName(Kind kind) {
    switch (kind) {
    case Kind::Null:
        return "null";
    case Kind::Boolean:
        return "a boolean";
    case Kind::Number:
        return "a number";
    case Kind::String:
        return "a string";
    case Kind::Array:
        return "an array";
    case Kind::Object:
        return "an object";
    }
    return "an unknown value";
}

} // namespace quorvane
