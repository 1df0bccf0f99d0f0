// One JSON value as read from text, with numbers kept as their source text so that money stays exact.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// Objects keep every member in source order, duplicates included; find()
// answers with the last member of a name, as a dictionary filled in source
// order would. Accessors of another kind's content answer empty, so a caller
// that checks kind() first never meets undefined behaviour and one that does
// not still cannot crash.
class JsonValue {
public:
    enum class Kind { Null, Boolean, Number, String, Array, Object };
    struct Member;

    JsonValue() = default;
    static JsonValue fromBool(bool value);
    // The text must be a JSON number; it is kept and written back unchanged.
    static JsonValue fromNumberText(std::string text);
    static JsonValue fromString(std::string text);
    static JsonValue fromElements(std::vector<JsonValue> elements);
    static JsonValue fromMembers(std::vector<Member> members);

    Kind kind() const { return m_kind; }
    // True only for the literal true.
    bool boolValue() const { return m_kind == Kind::Boolean && m_bool; }
    // A number's source text or a string's content; empty for the other kinds.
    const std::string& text() const { return m_text; }
    const std::vector<JsonValue>& elements() const { return m_elements; }
    const std::vector<Member>& members() const { return m_members; }
    // Nothing when this is not an object or has no member of that name.
    const JsonValue* find(std::string_view key) const;

    // "null", "a boolean", "a number", "a string", "an array", "an object":
    // for messages that say what was found where something else was expected.
    static std::string_view kindName(Kind kind);

private:
    Kind m_kind = Kind::Null;
    bool m_bool = false;
    std::string m_text;
    std::vector<JsonValue> m_elements;
    std::vector<Member> m_members;
};

struct JsonValue::Member {
    std::string key;
    JsonValue value;
};

} // namespace quorvane
