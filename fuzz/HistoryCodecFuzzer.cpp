// Whatever bytes the settings store hands back as the history: the decode
// never crashes, and a history it accepts is written and read back unchanged.
#include "FuzzAssert.h"
#include "tracking/HistoryCodec.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvane;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::optional<std::vector<BalancePoint>> points = HistoryCodec::decode(bytes);
    if (!points) {
        return 0;
    }
    const std::string encoded = HistoryCodec::encode(*points);
    const std::optional<std::vector<BalancePoint>> again = HistoryCodec::decode(encoded);
    fuzzAssert(again.has_value(), "an accepted history, encoded, decodes again");
    fuzzAssert(again->size() == points->size(), "no sample of an accepted history is lost on the way");
    fuzzAssert(*again == *points, "an accepted history reads back the same");
    // The codec's own text is a fixed point from its second writing on: the
    // first may still spell a zero timestamp "-0", which JSON reads as 0.
    const std::string rewritten = HistoryCodec::encode(*again);
    const std::optional<std::vector<BalancePoint>> third = HistoryCodec::decode(rewritten);
    fuzzAssert(third && HistoryCodec::encode(*third) == rewritten,
               "the codec's own text reads and writes unchanged");
    return 0;
}
