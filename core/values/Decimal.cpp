#include "values/Decimal.h"

#include "values/DoubleText.h"

#include <algorithm>
#include <cstddef>

namespace quorvane {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr Wide powerOfTen(int power) {
    Wide result = 1;
    for (int i = 0; i < power; ++i) {
        result *= 10;
    }
    return result;
}

// One more than the largest coefficient.
constexpr Wide kCoefficientLimit = powerOfTen(Decimal::kMaxDigits);

// Exponents in text are clamped here: far outside the representable range, yet
// no sum with a digit count can overflow.
constexpr std::int64_t kExponentClamp = 1'000'000'000'000;

std::string digitsOf(Wide value) {
    std::string digits;
    do {
        digits.push_back(static_cast<char>('0' + static_cast<int>(value % 10)));
        value /= 10;
    } while (value != 0);
    std::reverse(digits.begin(), digits.end());
    return digits;
}

int digitCount(Wide value) {
    int count = 1;
    while (value >= 10) {
        value /= 10;
        ++count;
    }
    return count;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

// The parts of a number as written: its significant digits (leading zeros
// dropped) times ten to the exponent, and where the text of it ends.
struct ScannedNumber {
    bool negative = false;
    std::string digits;
    std::int64_t exponent = 0;
    std::size_t end = 0;
};

std::optional<ScannedNumber> scanNumber(std::string_view text, std::size_t at) {
    ScannedNumber number;
    std::size_t i = at;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        number.negative = text[i] == '-';
        ++i;
    }
    bool anyDigit = false;
    bool seenPeriod = false;
    std::int64_t fractionDigits = 0;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (isDigit(c)) {
            anyDigit = true;
            if (!number.digits.empty() || c != '0') {
                number.digits.push_back(c);
            }
            if (seenPeriod) {
                ++fractionDigits;
            }
        } else if (c == '.' && !seenPeriod) {
            seenPeriod = true;
        } else {
            break;
        }
    }
    if (!anyDigit) {
        return std::nullopt;
    }
    std::int64_t exponent = 0;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        std::size_t j = i + 1;
        bool negativeExponent = false;
        if (j < text.size() && (text[j] == '+' || text[j] == '-')) {
            negativeExponent = text[j] == '-';
            ++j;
        }
        // "12e" and "12e+" read as 12: the exponent belongs to the number only with its digits.
        if (j < text.size() && isDigit(text[j])) {
            for (; j < text.size() && isDigit(text[j]); ++j) {
                exponent = std::min(exponent * 10 + (text[j] - '0'), kExponentClamp);
            }
            if (negativeExponent) {
                exponent = -exponent;
            }
            i = j;
        }
    }
    number.exponent = exponent - fractionDigits;
    number.end = i;
    return number;
}

} // namespace

Decimal::Decimal(bool negative, Coefficient coefficient, int exponent)
    : m_negative(negative)
    , m_coefficient(coefficient)
    , m_exponent(exponent) {}

Decimal Decimal::fromInteger(std::int64_t value) {
    const bool negative = value < 0;
    const auto magnitude =
        negative ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    return fromDigits(negative, digitsOf(magnitude), 0).value_or(Decimal{});
}

std::optional<Decimal> Decimal::fromDigits(bool negative, std::string_view digits, std::int64_t exponent) {
    const std::size_t first = digits.find_first_not_of('0');
    if (first == std::string_view::npos) {
        return Decimal{};
    }
    digits.remove_prefix(first);

    const std::size_t kept = std::min(digits.size(), static_cast<std::size_t>(kMaxDigits));
    Wide coefficient = 0;
    for (std::size_t i = 0; i < kept; ++i) {
        coefficient = coefficient * 10 + static_cast<unsigned>(digits[i] - '0');
    }
    exponent += static_cast<std::int64_t>(digits.size() - kept);
    if (kept < digits.size()) {
        const char roundingDigit = digits[kept];
        const bool moreBeyond = digits.find_first_not_of('0', kept + 1) != std::string_view::npos;
        const bool odd = coefficient % 2 == 1;
        if (roundingDigit > '5' || (roundingDigit == '5' && (moreBeyond || odd))) {
            ++coefficient;
            if (coefficient == kCoefficientLimit) {
                coefficient /= 10;
                ++exponent;
            }
        }
    }
    while (coefficient % 10 == 0) {
        coefficient /= 10;
        ++exponent;
    }
    if (exponent < kMinExponent || exponent > kMaxExponent) {
        return std::nullopt;
    }
    return Decimal(negative, coefficient, static_cast<int>(exponent));
}

Decimal Decimal::largest(bool negative) {
    return Decimal(negative, kCoefficientLimit - 1, kMaxExponent);
}

std::optional<Decimal> Decimal::parse(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size() && isBlank(text[start])) {
        ++start;
    }
    const std::optional<ScannedNumber> number = scanNumber(text, start);
    if (!number) {
        return std::nullopt;
    }
    return fromDigits(number->negative, number->digits, number->exponent);
}

std::optional<Decimal> Decimal::parseExact(std::string_view text) {
    const std::optional<ScannedNumber> number = scanNumber(text, 0);
    if (!number || number->end != text.size()) {
        return std::nullopt;
    }
    return fromDigits(number->negative, number->digits, number->exponent);
}

std::string Decimal::toString() const {
    std::string digits = digitsOf(m_coefficient);
    std::string text = m_negative ? "-" : "";
    if (m_exponent >= 0) {
        text += digits;
        text.append(static_cast<std::size_t>(m_exponent), '0');
        return text;
    }
    const auto fractionDigits = static_cast<std::size_t>(-m_exponent);
    if (fractionDigits < digits.size()) {
        digits.insert(digits.size() - fractionDigits, 1, '.');
        return text + digits;
    }
    text += "0.";
    text.append(fractionDigits - digits.size(), '0');
    return text + digits;
}

double Decimal::toDouble() const {
    // Reading the exact decimal text rounds once to the nearest double, with no
    // locale involved, which a chain of multiplications by ten would not.
    // Appended piece by piece: g++ 12 at -O3 misreads a literal prepended to a
    // temporary string as an overlapping copy (-Wrestrict).
    std::string text = m_negative ? "-" : "";
    text += digitsOf(m_coefficient);
    text += 'e';
    text += std::to_string(m_exponent);
    return DoubleText::parse(text).value_or(0.0);
}

Decimal Decimal::magnitude() const {
    return Decimal(false, m_coefficient, m_exponent);
}

Decimal Decimal::negated() const {
    if (isZero()) {
        return *this;
    }
    return Decimal(!m_negative, m_coefficient, m_exponent);
}

std::strong_ordering Decimal::compareMagnitudes(const Decimal& a, const Decimal& b) {
    if (a.isZero() || b.isZero()) {
        return !a.isZero()   ? std::strong_ordering::greater
               : !b.isZero() ? std::strong_ordering::less
                             : std::strong_ordering::equal;
    }
    const int digitsA = digitCount(a.m_coefficient);
    const int digitsB = digitCount(b.m_coefficient);
    const int magnitudeA = digitsA + a.m_exponent;
    const int magnitudeB = digitsB + b.m_exponent;
    if (magnitudeA != magnitudeB) {
        return magnitudeA < magnitudeB ? std::strong_ordering::less : std::strong_ordering::greater;
    }
    // Same leading power of ten: widening both to the full digit count lines them up.
    const Wide scaledA = a.m_coefficient * powerOfTen(kMaxDigits - digitsA);
    const Wide scaledB = b.m_coefficient * powerOfTen(kMaxDigits - digitsB);
    if (scaledA == scaledB) {
        return std::strong_ordering::equal;
    }
    return scaledA < scaledB ? std::strong_ordering::less : std::strong_ordering::greater;
}

std::strong_ordering operator<=>(const Decimal& a, const Decimal& b) {
    if (a.m_negative != b.m_negative) {
        return a.m_negative ? std::strong_ordering::less : std::strong_ordering::greater;
    }
    const std::strong_ordering magnitudes = Decimal::compareMagnitudes(a, b);
    return a.m_negative ? 0 <=> magnitudes : magnitudes;
}

Decimal operator+(const Decimal& a, const Decimal& b) {
    if (a.isZero()) {
        return b;
    }
    if (b.isZero()) {
        return a;
    }
    // Both coefficients written out at the smaller exponent: at most 38 digits
    // plus the exponent range, so the exact sum is always at hand before rounding.
    const int exponent = std::min(a.m_exponent, b.m_exponent);
    std::string digitsA = digitsOf(a.m_coefficient);
    digitsA.append(static_cast<std::size_t>(a.m_exponent - exponent), '0');
    std::string digitsB = digitsOf(b.m_coefficient);
    digitsB.append(static_cast<std::size_t>(b.m_exponent - exponent), '0');
    const std::size_t width = std::max(digitsA.size(), digitsB.size()) + 1;
    digitsA.insert(0, width - digitsA.size(), '0');
    digitsB.insert(0, width - digitsB.size(), '0');

    bool negative = a.m_negative;
    std::string result(width, '0');
    if (a.m_negative == b.m_negative) {
        int carry = 0;
        for (std::size_t i = width; i-- > 0;) {
            const int sum = (digitsA[i] - '0') + (digitsB[i] - '0') + carry;
            result[i] = static_cast<char>('0' + sum % 10);
            carry = sum / 10;
        }
    } else {
        const std::strong_ordering order = Decimal::compareMagnitudes(a, b);
        if (order == std::strong_ordering::equal) {
            return Decimal{};
        }
        if (order == std::strong_ordering::less) {
            std::swap(digitsA, digitsB);
            negative = b.m_negative;
        }
        int borrow = 0;
        for (std::size_t i = width; i-- > 0;) {
            int difference = (digitsA[i] - '0') - (digitsB[i] - '0') - borrow;
            borrow = difference < 0 ? 1 : 0;
            result[i] = static_cast<char>('0' + difference + 10 * borrow);
        }
    }
    return Decimal::fromDigits(negative, result, exponent).value_or(Decimal::largest(negative));
}

Decimal operator-(const Decimal& a, const Decimal& b) {
    return a + b.negated();
}

std::optional<Decimal> Decimal::dividedBy(const Decimal& divisor) const {
    if (divisor.isZero()) {
        return std::nullopt;
    }
    if (isZero()) {
        return Decimal{};
    }
    const Wide d = divisor.m_coefficient;
    Wide remainder = m_coefficient % d;
    std::string digits = digitsOf(m_coefficient / d);
    std::int64_t exponent = static_cast<std::int64_t>(m_exponent) - divisor.m_exponent;
    std::size_t significant = digits == "0" ? 0 : digits.size();
    // One digit past the 38 kept decides the rounding.
    while (remainder != 0 && significant <= static_cast<std::size_t>(kMaxDigits)) {
        // remainder * 10 can pass 2^128 when the divisor has 38 digits; adding
        // it ten times and taking the divisor away whenever it fits cannot,
        // since both stay below the divisor.
        Wide next = 0;
        int digit = 0;
        for (int i = 0; i < 10; ++i) {
            next += remainder;
            if (next >= d) {
                next -= d;
                ++digit;
            }
        }
        remainder = next;
        digits.push_back(static_cast<char>('0' + digit));
        --exponent;
        if (significant > 0 || digit != 0) {
            ++significant;
        }
    }
    if (remainder != 0) {
        // A nonzero tail: a final 1 makes a rounding digit of 5 round up, as it must.
        digits.push_back('1');
        --exponent;
    }
    return fromDigits(m_negative != divisor.m_negative, digits, exponent);
}

} // namespace quorvane
