#include "values/DoubleText.h"

#include <charconv>
#include <cmath>
#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>

namespace quorvane {

namespace {

// from_chars takes "inf", "infinity" and "nan" in any case; streams take none,
// so both paths read them here first.
std::optional<double> nonFinite(std::string_view text) {
    std::string lower;
    for (char c : text) {
        lower += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    }
    const bool negative = !lower.empty() && lower.front() == '-';
    const std::string_view body = std::string_view(lower).substr(negative ? 1 : 0);
    if (body == "inf" || body == "infinity") {
        return negative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
    }
    if (body == "nan") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return std::nullopt;
}

std::optional<std::string> nonFiniteText(double value) {
    if (std::isnan(value)) {
        return std::string("nan");
    }
    if (std::isinf(value)) {
        return std::string(value < 0 ? "-inf" : "inf");
    }
    return std::nullopt;
}

// Only what both paths agree on: an optional minus, digits with at most one
// period, an optional exponent. Streams would also take a leading plus, hex and
// blanks; from_chars would not.
bool isPlainNumber(std::string_view text) {
    std::size_t i = 0;
    if (i < text.size() && text[i] == '-') {
        ++i;
    }
    std::size_t digits = 0;
    bool period = false;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (c >= '0' && c <= '9') {
            ++digits;
        } else if (c == '.' && !period) {
            period = true;
        } else {
            break;
        }
    }
    if (digits == 0) {
        return false;
    }
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
            ++i;
        }
        std::size_t exponentDigits = 0;
        for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
            ++exponentDigits;
        }
        if (exponentDigits == 0) {
            return false;
        }
    }
    return i == text.size();
}

} // namespace

std::optional<double> DoubleText::parse(std::string_view text) {
#if defined(__cpp_lib_to_chars) && __cpp_lib_to_chars >= 201611L
    if (auto special = nonFinite(text)) {
        return special;
    }
    if (!isPlainNumber(text)) {
        return std::nullopt;
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
#else
    return parseWithStreams(text);
#endif
}

std::string DoubleText::shortest(double value, Notation notation) {
#if defined(__cpp_lib_to_chars) && __cpp_lib_to_chars >= 201611L
    if (auto special = nonFiniteText(value)) {
        return *special;
    }
    char buffer[400];
    const std::chars_format format = notation == Notation::Fixed        ? std::chars_format::fixed
                                     : notation == Notation::Scientific ? std::chars_format::scientific
                                                                        : std::chars_format::general;
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, format);
    if (error == std::errc()) {
        return std::string(buffer, end);
    }
    return shortestWithStreams(value, notation);
#else
    return shortestWithStreams(value, notation);
#endif
}

std::optional<double> DoubleText::parseWithStreams(std::string_view text) {
    if (auto special = nonFinite(text)) {
        return special;
    }
    if (!isPlainNumber(text)) {
        return std::nullopt;
    }
    std::istringstream in{std::string(text)};
    in.imbue(std::locale::classic());
    double value = 0.0;
    in >> value;
    // Overflow sets failbit; anything left unread means the text was not all number.
    if (in.fail() || in.peek() != std::char_traits<char>::eof()) {
        return std::nullopt;
    }
    // Underflow does not set it: a nonzero number too small for a double reads
    // as 0, which from_chars refuses as out of range, and so must this path.
    const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
    if (value == 0.0 && mantissa.find_first_of("123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    return value;
}

std::string DoubleText::shortestWithStreams(double value, Notation notation) {
    if (auto special = nonFiniteText(value)) {
        return *special;
    }
    // Fixed notation may need many digits after the point for tiny values;
    // the others never need more than 17 significant digits.
    const int limit = notation == Notation::Fixed ? 330 : 17;
    std::string text;
    for (int precision = notation == Notation::General ? 1 : 0; precision <= limit; ++precision) {
        std::ostringstream out;
        out.imbue(std::locale::classic());
        if (notation == Notation::Fixed) {
            out << std::fixed;
        } else if (notation == Notation::Scientific) {
            out << std::scientific;
        }
        out << std::setprecision(precision) << value;
        text = out.str();
        if (parseWithStreams(text) == value) {
            break;
        }
    }
    return text;
}

} // namespace quorvane
