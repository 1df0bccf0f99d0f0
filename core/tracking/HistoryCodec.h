// The stored form of the balance history: the JSON text the platform's encoder writes for it.
#pragma once

#include "tracking/BalancePoint.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// [{"timestamp":<seconds since 2001>,"currency":"<code>","balance":<decimal>},...]
// compact, keys in that order. A timestamp is written with the fewest digits
// that read back to the same double, without an exponent between 1e-4 and
// 1e16, and a balance as its plain decimal text, so a decoded history equals
// the encoded one.
class HistoryCodec {
public:
    // A sample whose timestamp is not finite has no JSON number and is left
    // out; every other sample is written, in order.
    static std::string encode(const std::vector<BalancePoint>& points);

    // A top-level array of objects, keys in any order, others ignored. All three
    // keys are required: "timestamp" a number that fits a double, "currency" a
    // string, "balance" a number within the decimal's range, read exactly. Any
    // fault anywhere gives nothing: a history is read whole or not at all.
    static std::optional<std::vector<BalancePoint>> decode(std::string_view bytes);
};

} // namespace quorvane
