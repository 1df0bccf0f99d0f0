// Text of a double in the program's own, locale-free form: read and written identically everywhere.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

// The C++17 character conversions are exact and ignore the C locale (which a
// GUI toolkit switches to the user's), but not every standard library offers
// them for double: Apple's does not for the macOS versions the app supports.
// There the same results come from streams imbued with the classic locale,
// which are slower but equally exact. Both paths are public so the portable
// one is tested on every platform.
class DoubleText {
public:
    enum class Notation { Fixed, Scientific, General };

    // The whole text as a number ("12", "-0.5", "1e3", "inf", "nan"); no
    // blanks, no trailing characters, no out-of-range values.
    static std::optional<double> parse(std::string_view text);
    // The fewest digits that read back to the same value, in the notation
    // given; "inf", "-inf" or "nan" for values that are not finite. General
    // lets the library choose between the two, and the two paths may choose
    // differently (1234567.5 or 1.2345675e+06): both read back to the same
    // value, and nothing stored by the program is written in General.
    static std::string shortest(double value, Notation notation);

    static std::optional<double> parseWithStreams(std::string_view text);
    static std::string shortestWithStreams(double value, Notation notation);
};

} // namespace quorvane
