#include "json/JsonWriter.h"

#include "values/Utf8.h"

#include <cstddef>

namespace quorvane {

namespace {

constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";

// How many bytes the sequence led by this byte claims; 0 for a byte that leads none.
std::size_t claimedLength(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        return 4;
    }
    return 0;
}

void appendEscaped(std::string& out, char c) {
    static constexpr char kHex[] = "0123456789abcdef";
    switch (c) {
    case '"':
        out += "\\\"";
        return;
    case '\\':
        out += "\\\\";
        return;
    case '/':
        out += "\\/";
        return;
    case '\b':
        out += "\\b";
        return;
    case '\f':
        out += "\\f";
        return;
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        break;
    }
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20) {
        out += "\\u00";
        out += kHex[byte >> 4];
        out += kHex[byte & 0x0F];
    } else {
        out += c;
    }
}

} // namespace

std::string JsonWriter::write(const JsonValue& value) {
    std::string out;
    append(out, value);
    return out;
}

std::string JsonWriter::quoted(std::string_view text) {
    std::string out = "\"";
    const bool valid = isValidUtf8(text);
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t length = claimedLength(static_cast<unsigned char>(text[i]));
        if (length == 1) {
            appendEscaped(out, text[i]);
            ++i;
        } else if (length != 0 && (valid || isValidUtf8(text.substr(i, length)))) {
            out.append(text.substr(i, length));
            i += length;
        } else {
            out += kReplacementCharacter;
            ++i;
        }
    }
    out += '"';
    return out;
}

void JsonWriter::append(std::string& out, const JsonValue& value) {
    switch (value.kind()) {
    case JsonValue::Kind::Null:
        out += "null";
        return;
    case JsonValue::Kind::Boolean:
        out += value.boolValue() ? "true" : "false";
        return;
    case JsonValue::Kind::Number:
        out += value.text();
        return;
    case JsonValue::Kind::String:
        out += quoted(value.text());
        return;
    case JsonValue::Kind::Array: {
        out += '[';
        const char* separator = "";
        for (const JsonValue& element : value.elements()) {
            out += separator;
            append(out, element);
            separator = ",";
        }
        out += ']';
        return;
    }
    case JsonValue::Kind::Object: {
        out += '{';
        const char* separator = "";
        for (const JsonValue::Member& member : value.members()) {
            out += separator;
            out += quoted(member.key);
            out += ':';
            append(out, member.value);
            separator = ",";
        }
        out += '}';
        return;
    }
    }
}

} // namespace quorvane
