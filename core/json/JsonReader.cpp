#include "json/JsonReader.h"

#include "values/Utf8.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {

namespace {

// A recursive-descent reader of RFC 8259. Numbers are checked against the
// grammar and kept as text, never converted: a value the caller ignores may
// hold any number (1e400, a 400-digit integer) without failing the document.
class Parser {
public:
    // `offset`: bytes before `text` in the document, for the positions in errors.
    Parser(std::string_view text, std::size_t offset)
        : m_text(text)
        , m_offset(offset) {}

    JsonReader::Result parseDocument() {
        skipBlanks();
        std::optional<JsonValue> value = parseValue(0);
        if (value) {
            skipBlanks();
            if (m_at != m_text.size()) {
                fail();
                value.reset();
            }
        }
        if (!value) {
            return {std::nullopt, m_error};
        }
        return {std::move(value), {}};
    }

private:
    bool atEnd() const { return m_at >= m_text.size(); }
    char peek() const { return atEnd() ? '\0' : m_text[m_at]; }

    // The first byte that cannot continue a JSON text, counted from 1; or the end.
    void fail() {
        if (m_error.empty()) {
            m_error = atEnd() ? std::string("unexpected end of input")
                              : "syntax error at byte " + std::to_string(m_offset + m_at + 1);
        }
    }

    void skipBlanks() {
        while (!atEnd() && (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r')) {
            ++m_at;
        }
    }

    bool consume(char expected) {
        if (peek() == expected) {
            ++m_at;
            return true;
        }
        fail();
        return false;
    }

    std::optional<JsonValue> parseValue(std::size_t depth) {
        switch (peek()) {
        case '{':
        case '[':
            if (depth >= JsonReader::kMaxDepth) {
                m_error = "nested deeper than " + std::to_string(JsonReader::kMaxDepth) + " levels";
                return std::nullopt;
            }
            return peek() == '{' ? parseObject(depth + 1) : parseArray(depth + 1);
        case '"': {
            std::optional<std::string> text = parseString();
            return text ? std::optional<JsonValue>(JsonValue::fromString(std::move(*text))) : std::nullopt;
        }
        case 't':
            return parseLiteral("true") ? std::optional<JsonValue>(JsonValue::fromBool(true)) : std::nullopt;
        case 'f':
            return parseLiteral("false") ? std::optional<JsonValue>(JsonValue::fromBool(false))
                                         : std::nullopt;
        case 'n':
            return parseLiteral("null") ? std::optional<JsonValue>(JsonValue()) : std::nullopt;
        default:
            return parseNumber();
        }
    }

    bool parseLiteral(std::string_view literal) {
        for (const char c : literal) {
            if (!consume(c)) {
                return false;
            }
        }
        return true;
    }

    std::optional<JsonValue> parseObject(std::size_t depth) {
        ++m_at;
        std::vector<JsonValue::Member> members;
        skipBlanks();
        if (peek() == '}') {
            ++m_at;
            return JsonValue::fromMembers(std::move(members));
        }
        while (true) {
            skipBlanks();
            if (peek() != '"' || atEnd()) {
                fail();
                return std::nullopt;
            }
            std::optional<std::string> key = parseString();
            if (!key) {
                return std::nullopt;
            }
            skipBlanks();
            if (!consume(':')) {
                return std::nullopt;
            }
            skipBlanks();
            std::optional<JsonValue> value = parseValue(depth);
            if (!value) {
                return std::nullopt;
            }
            members.push_back(JsonValue::Member{std::move(*key), std::move(*value)});
            skipBlanks();
            if (peek() == ',') {
                ++m_at;
                continue;
            }
            if (!consume('}')) {
                return std::nullopt;
            }
            return JsonValue::fromMembers(std::move(members));
        }
    }

    std::optional<JsonValue> parseArray(std::size_t depth) {
        ++m_at;
        std::vector<JsonValue> elements;
        skipBlanks();
        if (peek() == ']') {
            ++m_at;
            return JsonValue::fromElements(std::move(elements));
        }
        while (true) {
            skipBlanks();
            std::optional<JsonValue> value = parseValue(depth);
            if (!value) {
                return std::nullopt;
            }
            elements.push_back(std::move(*value));
            skipBlanks();
            if (peek() == ',') {
                ++m_at;
                continue;
            }
            if (!consume(']')) {
                return std::nullopt;
            }
            return JsonValue::fromElements(std::move(elements));
        }
    }

    bool digits() {
        const std::size_t start = m_at;
        while (!atEnd() && peek() >= '0' && peek() <= '9') {
            ++m_at;
        }
        if (m_at == start) {
            fail();
            return false;
        }
        return true;
    }

    std::optional<JsonValue> parseNumber() {
        const std::size_t start = m_at;
        if (peek() == '-') {
            ++m_at;
        }
        if (peek() == '0') {
            ++m_at;
        } else if (!digits()) {
            return std::nullopt;
        }
        bool integer = true;
        if (peek() == '.') {
            ++m_at;
            integer = false;
            if (!digits()) {
                return std::nullopt;
            }
        }
        if ((peek() == 'e' || peek() == 'E')) {
            ++m_at;
            integer = false;
            if ((peek() == '+' || peek() == '-')) {
                ++m_at;
            }
            if (!digits()) {
                return std::nullopt;
            }
        }
        const std::string_view number = m_text.substr(start, m_at - start);
        // The one integer JSON can spell two ways.
        return JsonValue::fromNumberText(integer && number == "-0" ? std::string("0") : std::string(number));
    }

    int hexDigit(char c) const {
        if (c >= '0' && c <= '9') {
            return c - '0';
        }
        if (c >= 'a' && c <= 'f') {
            return c - 'a' + 10;
        }
        if (c >= 'A' && c <= 'F') {
            return c - 'A' + 10;
        }
        return -1;
    }

    // The four hex digits after "\u".
    std::optional<char32_t> parseHexQuad() {
        char32_t value = 0;
        for (int i = 0; i < 4; ++i) {
            const int digit = atEnd() ? -1 : hexDigit(peek());
            if (digit < 0) {
                fail();
                return std::nullopt;
            }
            value = value * 16 + static_cast<char32_t>(digit);
            ++m_at;
        }
        return value;
    }

    // After the backslash and the 'u': one code point, a surrogate pair joined.
    std::optional<char32_t> parseUnicodeEscape() {
        const std::optional<char32_t> first = parseHexQuad();
        if (!first) {
            return std::nullopt;
        }
        if (*first >= 0xDC00 && *first <= 0xDFFF) {
            fail();
            return std::nullopt;
        }
        if (*first < 0xD800 || *first > 0xDBFF) {
            return first;
        }
        if (!consume('\\') || !consume('u')) {
            return std::nullopt;
        }
        const std::optional<char32_t> second = parseHexQuad();
        if (!second) {
            return std::nullopt;
        }
        if (*second < 0xDC00 || *second > 0xDFFF) {
            m_at -= 1;
            fail();
            return std::nullopt;
        }
        return 0x10000 + ((*first - 0xD800) << 10) + (*second - 0xDC00);
    }

    std::optional<std::string> parseString() {
        ++m_at;
        std::string out;
        while (true) {
            if (atEnd()) {
                fail();
                return std::nullopt;
            }
            const char c = peek();
            if (c == '"') {
                ++m_at;
                return out;
            }
            if (static_cast<unsigned char>(c) < 0x20) {
                fail();
                return std::nullopt;
            }
            if (c != '\\') {
                // The whole text was checked as UTF-8 before parsing began.
                out += c;
                ++m_at;
                continue;
            }
            ++m_at;
            const char escape = peek();
            if (atEnd()) {
                fail();
                return std::nullopt;
            }
            ++m_at;
            switch (escape) {
            case '"':
            case '\\':
            case '/':
                out += escape;
                break;
            case 'b':
                out += '\b';
                break;
            case 'f':
                out += '\f';
                break;
            case 'n':
                out += '\n';
                break;
            case 'r':
                out += '\r';
                break;
            case 't':
                out += '\t';
                break;
            case 'u': {
                const std::optional<char32_t> codePoint = parseUnicodeEscape();
                if (!codePoint) {
                    return std::nullopt;
                }
                appendUtf8(out, *codePoint);
                break;
            }
            default:
                m_at -= 1;
                fail();
                return std::nullopt;
            }
        }
    }

    std::string_view m_text;
    std::size_t m_offset;
    std::size_t m_at = 0;
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
    // A byte-order mark is tolerated before the text, as RFC 8259 allows a reader to.
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    const std::size_t offset = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    return Parser(text.substr(offset), offset).parseDocument();
}

} // namespace quorvane
