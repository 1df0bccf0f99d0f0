// Doubles as text, both ways and on both paths: the exact conversions this
// library has and the stream-based ones a Mac takes must read the same texts
// to the same values, and every shortest text must read back to its value.
#include "FuzzAssert.h"
#include "values/DoubleText.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {
namespace {

bool sameDouble(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}

bool sameReading(const std::optional<double>& a, const std::optional<double>& b) {
    return a.has_value() == b.has_value() && (!a || sameDouble(*a, *b));
}

void checkShortest(double value) {
    for (const DoubleText::Notation notation :
         {DoubleText::Notation::Fixed, DoubleText::Notation::Scientific, DoubleText::Notation::General}) {
        const std::string text = DoubleText::shortest(value, notation);
        const std::optional<double> back = DoubleText::parse(text);
        fuzzAssert(back && sameDouble(*back, value), "a shortest text reads back to its value");
        // Fixed notation of a tiny value costs the streams hundreds of tries,
        // each hundreds of digits long, and the program writes none: the
        // history writes those in scientific notation.
        if (notation == DoubleText::Notation::Fixed && value != 0.0 && std::fabs(value) < 1e-4) {
            continue;
        }
        const std::string streamed = DoubleText::shortestWithStreams(value, notation);
        const std::optional<double> streamedBack = DoubleText::parseWithStreams(streamed);
        fuzzAssert(streamedBack && sameDouble(*streamedBack, value),
                   "a shortest text from streams reads back to its value");
        // The texts themselves must match where the stored history writes
        // everyday timestamps: fixed notation below 1e16. Elsewhere the
        // streams' digits may be longer (the exact integer beyond 1e16; one
        // digit more next to a power of two, whose lower neighbour is nearer),
        // and the general notation picks its layout by another rule; the
        // value read back is the same either way.
        if (notation == DoubleText::Notation::Fixed && std::fabs(value) < 1e16) {
            fuzzAssert(streamed == text, "both paths write a value alike");
        }
    }
}

} // namespace
} // namespace quorvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvane;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::optional<double> parsed = DoubleText::parse(text);
    fuzzAssert(sameReading(parsed, DoubleText::parseWithStreams(text)), "both paths read a text alike");
    if (parsed) {
        checkShortest(*parsed);
    }
    // The same bytes as a double's bits reach values no short text spells:
    // subnormals, the largest finite values, NaNs with payloads.
    if (size >= sizeof(double)) {
        double bits = 0.0;
        std::memcpy(&bits, data, sizeof bits);
        checkShortest(bits);
    }
    return 0;
}
