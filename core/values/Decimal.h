// An exact base-10 number for money: balances, spends, differences and chart ranges.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

// A sign, a coefficient of at most 38 decimal digits and a power-of-ten exponent.
// Values are kept normalised (no trailing zeros in the coefficient, zero is
// unsigned with exponent 0), so 110.00 and 110 are the same value and print alike.
// Results that need more than 38 significant digits are rounded half-even,
// as the platform's own decimal type does; everything else is exact.
class Decimal {
public:
    static constexpr int kMaxDigits = 38;
    static constexpr int kMinExponent = -128;
    static constexpr int kMaxExponent = 127;

    Decimal() = default;
    static Decimal fromInteger(std::int64_t value);

    // Reads a number written with a period as decimal separator, whatever the
    // user's locale. Accepted, in this order: ASCII blanks, an optional sign,
    // digits with at most one period (at least one digit), an optional exponent
    // ("e" or "E", optional sign, digits). The longest such prefix is read and
    // the rest of the text ignored, so "12abc" reads as 12 and "1,234.5" as 1;
    // a comma is never a decimal separator. Empty or non-numeric text gives
    // nothing. So does a value whose normalised exponent, after rounding to 38
    // digits, is outside [kMinExponent, kMaxExponent]: too small is not read
    // as zero, since a silent zero would pass for a real amount. A zero written
    // with any exponent ("0e-999") is zero.
    static std::optional<Decimal> parse(std::string_view text);

    // Like parse, but the whole text must be the number: no blanks, no trailing
    // characters. Used where the text is known to be a number token (JSON).
    static std::optional<Decimal> parseExact(std::string_view text);

    // Plain text: an optional minus, digits, and a period only when there is a
    // fraction. No exponent, no grouping: 12.5, -0.0037, 1200.
    std::string toString() const;
    double toDouble() const;

    bool isZero() const { return m_coefficient == 0; }
    bool isNegative() const { return m_negative; }
    Decimal magnitude() const;
    Decimal negated() const;

    // Exact when the result fits 38 digits, else rounded half-even. A result
    // beyond the largest value (38 nines times 10^127) stays at that value.
    friend Decimal operator+(const Decimal& a, const Decimal& b);
    friend Decimal operator-(const Decimal& a, const Decimal& b);
    // Quotient to 38 significant digits, rounded half-even; nothing when
    // dividing by zero or when the quotient is outside the exponent range.
    std::optional<Decimal> dividedBy(const Decimal& divisor) const;

    friend bool operator==(const Decimal& a, const Decimal& b) = default;
    friend std::strong_ordering operator<=>(const Decimal& a, const Decimal& b);

private:
    __extension__ using Coefficient = unsigned __int128;

    Decimal(bool negative, Coefficient coefficient, int exponent);
    // digits (any count, leading zeros allowed) times 10^exponent, rounded to
    // 38 digits and normalised; nothing when the exponent is out of range.
    static std::optional<Decimal> fromDigits(bool negative, std::string_view digits, std::int64_t exponent);
    static Decimal largest(bool negative);
    static std::strong_ordering compareMagnitudes(const Decimal& a, const Decimal& b);

    bool m_negative = false;
    Coefficient m_coefficient = 0;
    int m_exponent = 0;
};

} // namespace quorvane
