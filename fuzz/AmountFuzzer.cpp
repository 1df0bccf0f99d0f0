// Amount texts as the endpoint, the store or a user might write them: every
// number read prints as text that reads back to itself, converts to a finite
// double of the same sign, and obeys the arithmetic's basic laws.
#include "FuzzAssert.h"
#include "balance/ParseAmount.h"
#include "values/Decimal.h"
#include "values/DoubleText.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {
namespace {

bool isPlainDecimalText(const std::string& text) {
    std::size_t i = text.starts_with('-') ? 1 : 0;
    bool period = false;
    bool digit = false;
    for (; i < text.size(); ++i) {
        if (text[i] >= '0' && text[i] <= '9') {
            digit = true;
        } else if (text[i] == '.' && !period && digit) {
            period = true;
        } else {
            return false;
        }
    }
    // Normalised: a fraction never ends in zero or in its point.
    return digit && (!period || (text.back() != '0' && text.back() != '.'));
}

void checkValue(const Decimal& value) {
    const std::string text = value.toString();
    fuzzAssert(isPlainDecimalText(text), "toString writes plain, normalised decimal text");
    fuzzAssert(Decimal::parseExact(text) == value, "toString reads back exactly with parseExact");
    fuzzAssert(Decimal::parse(text) == value, "toString reads back exactly with parse");

    const double approximation = value.toDouble();
    fuzzAssert(std::isfinite(approximation), "every decimal in range converts to a finite double");
    fuzzAssert((approximation == 0.0) == value.isZero(), "only zero converts to 0");
    fuzzAssert(value.isZero() || std::signbit(approximation) == value.isNegative(),
               "the sign survives toDouble");
    fuzzAssert(DoubleText::parse(text) == approximation, "toDouble rounds the decimal's own text");

    fuzzAssert(value.negated().negated() == value, "negating twice gives the value back");
    fuzzAssert(!value.magnitude().isNegative(), "a magnitude is never negative");
    fuzzAssert((value - value).isZero(), "a value minus itself is zero");
    fuzzAssert(value + Decimal{} == value, "adding zero changes nothing");
    if (!value.isZero()) {
        fuzzAssert(value.dividedBy(value) == Decimal::fromInteger(1), "a value divided by itself is one");
    }
    fuzzAssert(value.dividedBy(Decimal::fromInteger(1)) == value, "dividing by one changes nothing");
    fuzzAssert(!value.dividedBy(Decimal{}).has_value(), "dividing by zero gives nothing");
}

void checkPair(const Decimal& a, const Decimal& b) {
    fuzzAssert(a + b == b + a, "addition commutes");
    const Decimal difference = a - b;
    const auto order = a <=> b;
    fuzzAssert((order == 0) == difference.isZero(), "only equal values have no difference");
    fuzzAssert(order == 0 || (order > 0) == !difference.isNegative(),
               "a difference has the sign of the order");
    fuzzAssert((b - a) == difference.negated(), "swapping the operands negates a difference");
}

} // namespace
} // namespace quorvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvane;
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    const std::optional<Decimal> parsed = Decimal::parse(text);
    fuzzAssert(parseAmount(text) == parsed.value_or(Decimal{}), "parseAmount is parse with 0 for nothing");
    const std::optional<Decimal> exact = Decimal::parseExact(text);
    if (exact) {
        fuzzAssert(parsed == exact, "a text that is wholly a number reads the same either way");
    }
    if (parsed) {
        checkValue(*parsed);
    }

    // A second operand after the first line break, for the laws between two values.
    const std::size_t lineBreak = text.find('\n');
    if (parsed && lineBreak != std::string_view::npos) {
        if (const std::optional<Decimal> other = Decimal::parse(text.substr(lineBreak + 1))) {
            checkValue(*other);
            checkPair(*parsed, *other);
        }
    }
    return 0;
}
