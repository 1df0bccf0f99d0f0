#include "json/JsonReader.h"

#include "platform/Utf8.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <utility>
#include <vector>

namespace quorvane {

namespace {

using Json = nlohmann::json;

// Collects the parser's events into a JsonValue, one open container per frame.
class ValueBuilder {
public:
    explicit ValueBuilder(std::size_t length)
        : m_length(length) {}

    std::optional<JsonValue> takeRoot() { return std::move(m_root); }
    const std::string& error() const { return m_error; }

    bool null() { return add(JsonValue{}); }
    bool boolean(bool value) { return add(JsonValue::fromBool(value)); }
    bool number_integer(Json::number_integer_t value) {
        return add(JsonValue::fromNumberText(std::to_string(value)));
    }
    bool number_unsigned(Json::number_unsigned_t value) {
        return add(JsonValue::fromNumberText(std::to_string(value)));
    }
    bool number_float(Json::number_float_t, const Json::string_t& text) {
        // The lexer writes the C locale's decimal point into its token, so
        // under a program that set a German locale "2.5" arrives as "2,5".
        // JSON numbers hold nothing but digits, signs, exponent marks and the
        // point, so anything else is that point.
        std::string number = text;
        for (char& c : number) {
            const bool digit = c >= '0' && c <= '9';
            if (!digit && c != '-' && c != '+' && c != 'e' && c != 'E') {
                c = '.';
            }
        }
        return add(JsonValue::fromNumberText(std::move(number)));
    }
    bool string(Json::string_t& value) { return add(JsonValue::fromString(std::move(value))); }
    bool binary(Json::binary_t&) { return false; }

    bool start_object(std::size_t) { return open(true); }
    bool key(Json::string_t& name) {
        m_frames.back().key = std::move(name);
        return true;
    }
    bool end_object() { return close(JsonValue::fromMembers(std::move(m_frames.back().members))); }
    bool start_array(std::size_t) { return open(false); }
    bool end_array() { return close(JsonValue::fromElements(std::move(m_frames.back().elements))); }

    bool parse_error(std::size_t position, const std::string&, const Json::exception& failure) {
        // The library's own message quotes the offending text; only its
        // position and kind are kept. Positions count bytes from 1, and the
        // library reads one past the last byte when the text ends too early.
        if (failure.id == 406) {
            m_error = "number out of range at byte " + std::to_string(position);
        } else if (position > m_length) {
            m_error = "unexpected end of input";
        } else {
            m_error = "syntax error at byte " + std::to_string(position);
        }
        return false;
    }

private:
    struct Frame {
        bool object = false;
        std::vector<JsonValue> elements;
        std::vector<JsonValue::Member> members;
        std::string key;
    };

    bool add(JsonValue value) {
        if (m_frames.empty()) {
            m_root = std::move(value);
        } else if (Frame& frame = m_frames.back(); frame.object) {
            frame.members.push_back(JsonValue::Member{std::move(frame.key), std::move(value)});
        } else {
            frame.elements.push_back(std::move(value));
        }
        return true;
    }

    bool open(bool object) {
        if (m_frames.size() >= JsonReader::kMaxDepth) {
            m_error = "nested deeper than " + std::to_string(JsonReader::kMaxDepth) + " levels";
            return false;
        }
        m_frames.push_back(Frame{object, {}, {}, {}});
        return true;
    }

    bool close(JsonValue container) {
        m_frames.pop_back();
        return add(std::move(container));
    }

    std::size_t m_length;
    std::vector<Frame> m_frames;
    std::optional<JsonValue> m_root;
    std::string m_error;
};

} // namespace

JsonReader::Result JsonReader::parse(std::string_view text) {
    if (text.empty()) {
        return {std::nullopt, "empty input"};
    }
    if (!isValidUtf8(text)) {
        return {std::nullopt, "not valid UTF-8"};
    }
    // The library takes a NUL byte for the end of the text and would accept
    // whatever follows it unread; no JSON text holds one.
    if (const std::size_t nul = text.find('\0'); nul != std::string_view::npos) {
        return {std::nullopt, "syntax error at byte " + std::to_string(nul + 1)};
    }
    ValueBuilder builder(text.size());
    bool parsed = false;
    try {
        parsed = Json::sax_parse(text.begin(), text.end(), &builder, Json::input_format_t::json, true, false);
    } catch (const Json::exception&) {
        parsed = false;
    }
    if (!parsed) {
        return {std::nullopt, builder.error().empty() ? "syntax error" : builder.error()};
    }
    return {builder.takeRoot(), {}};
}

} // namespace quorvane
