#include "platform/Defaults.h"

#include "values/DoubleText.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <string_view>

namespace quorvane {

namespace {

std::string_view trimmed(std::string_view text) {
    auto isBlank = [](char c) {
        return std::isspace(static_cast<unsigned char>(c)) != 0;
    };
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

// The whole (trimmed) text as a number, independent of the C locale, which a
// GUI toolkit may have switched to the user's.
std::optional<double> numberFromText(std::string_view text) {
    text = trimmed(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    return DoubleText::parse(text);
}

} // namespace

Defaults::Defaults(SettingsStore& store)
    : m_store(store) {}

bool Defaults::hasValue(const std::string& key) const {
    return m_store.value(key).has_value();
}

bool Defaults::boolValue(const std::string& key) const {
    auto value = m_store.value(key);
    if (!value) {
        return false;
    }
    if (auto* b = std::get_if<bool>(&*value)) {
        return *b;
    }
    if (auto* i = std::get_if<std::int64_t>(&*value)) {
        return *i != 0;
    }
    if (auto* d = std::get_if<double>(&*value)) {
        return *d != 0.0 && !std::isnan(*d);
    }
    if (auto* s = std::get_if<std::string>(&*value)) {
        std::string_view text = trimmed(*s);
        if (equalsIgnoringCase(text, "yes") || equalsIgnoringCase(text, "true")) {
            return true;
        }
        std::int64_t number = 0;
        std::from_chars(text.data(), text.data() + text.size(), number);
        return number != 0;
    }
    return false;
}

double Defaults::doubleValue(const std::string& key) const {
    auto value = m_store.value(key);
    if (!value) {
        return 0.0;
    }
    if (auto* b = std::get_if<bool>(&*value)) {
        return *b ? 1.0 : 0.0;
    }
    if (auto* i = std::get_if<std::int64_t>(&*value)) {
        return static_cast<double>(*i);
    }
    if (auto* d = std::get_if<double>(&*value)) {
        return *d;
    }
    if (auto* s = std::get_if<std::string>(&*value)) {
        return numberFromText(*s).value_or(0.0);
    }
    return 0.0;
}

std::optional<std::string> Defaults::stringValue(const std::string& key) const {
    auto value = m_store.value(key);
    if (!value) {
        return std::nullopt;
    }
    if (auto* s = std::get_if<std::string>(&*value)) {
        return *s;
    }
    if (auto* i = std::get_if<std::int64_t>(&*value)) {
        return std::to_string(*i);
    }
    if (auto* d = std::get_if<double>(&*value)) {
        return DoubleText::shortest(*d, DoubleText::Notation::General);
    }
    return std::nullopt;
}

std::optional<std::string> Defaults::dataValue(const std::string& key) const {
    auto value = m_store.value(key);
    if (!value) {
        return std::nullopt;
    }
    if (auto* bytes = std::get_if<SettingBytes>(&*value)) {
        return bytes->bytes;
    }
    return std::nullopt;
}

void Defaults::setBool(const std::string& key, bool value) {
    m_store.setValue(key, value);
}

void Defaults::setInteger(const std::string& key, std::int64_t value) {
    m_store.setValue(key, value);
}

void Defaults::setString(const std::string& key, const std::string& value) {
    m_store.setValue(key, value);
}

void Defaults::setData(const std::string& key, const std::string& bytes) {
    m_store.setValue(key, SettingBytes{bytes});
}

void Defaults::remove(const std::string& key) {
    m_store.remove(key);
}

} // namespace quorvane
