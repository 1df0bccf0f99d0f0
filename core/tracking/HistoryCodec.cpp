#include "tracking/HistoryCodec.h"

#include "json/JsonReader.h"
#include "json/JsonValue.h"
#include "json/JsonWriter.h"
#include "values/DoubleText.h"

#include <cmath>

namespace quorvane {

namespace {

constexpr std::string_view kTimestampKey = "timestamp";
constexpr std::string_view kCurrencyKey = "currency";
constexpr std::string_view kBalanceKey = "balance";

// The shortest digits that read back to the same double, laid out as the
// platform's encoder writes a double: plainly for everyday magnitudes (a
// timestamp is about 8e8 and must not come out as "7.85e+08"), with an
// exponent only for very large or very small ones.
std::string shortestText(double value) {
    const double magnitude = std::fabs(value);
    const bool plain = magnitude == 0.0 || (magnitude >= 1e-4 && magnitude < 1e16);
    return DoubleText::shortest(value,
                                plain ? DoubleText::Notation::Fixed : DoubleText::Notation::Scientific);
}

std::optional<double> readDouble(const std::string& text) {
    return DoubleText::parse(text);
}

std::optional<BalancePoint> decodePoint(const JsonValue& entry) {
    const JsonValue* timestamp = entry.find(kTimestampKey);
    const JsonValue* currency = entry.find(kCurrencyKey);
    const JsonValue* balance = entry.find(kBalanceKey);
    if (timestamp == nullptr || timestamp->kind() != JsonValue::Kind::Number || currency == nullptr ||
        currency->kind() != JsonValue::Kind::String || balance == nullptr ||
        balance->kind() != JsonValue::Kind::Number) {
        return std::nullopt;
    }
    const std::optional<double> seconds = readDouble(timestamp->text());
    const std::optional<Decimal> amount = Decimal::parseExact(balance->text());
    if (!seconds || !amount) {
        return std::nullopt;
    }
    return BalancePoint{Timestamp{*seconds}, currency->text(), *amount};
}

} // namespace

std::string HistoryCodec::encode(const std::vector<BalancePoint>& points) {
    std::vector<JsonValue> entries;
    entries.reserve(points.size());
    for (const BalancePoint& point : points) {
        if (!std::isfinite(point.timestamp.secondsSinceReferenceDate)) {
            continue;
        }
        std::vector<JsonValue::Member> members;
        members.push_back({std::string(kTimestampKey), JsonValue::fromNumberText(shortestText(
                                                           point.timestamp.secondsSinceReferenceDate))});
        members.push_back({std::string(kCurrencyKey), JsonValue::fromString(point.currency)});
        members.push_back({std::string(kBalanceKey), JsonValue::fromNumberText(point.balance.toString())});
        entries.push_back(JsonValue::fromMembers(std::move(members)));
    }
    return JsonWriter::write(JsonValue::fromElements(std::move(entries)));
}

std::optional<std::vector<BalancePoint>> HistoryCodec::decode(std::string_view bytes) {
    const JsonReader::Result parsed = JsonReader::parse(bytes);
    if (!parsed.value || parsed.value->kind() != JsonValue::Kind::Array) {
        return std::nullopt;
    }
    std::vector<BalancePoint> points;
    points.reserve(parsed.value->elements().size());
    for (const JsonValue& entry : parsed.value->elements()) {
        std::optional<BalancePoint> point = decodePoint(entry);
        if (!point) {
            return std::nullopt;
        }
        points.push_back(std::move(*point));
    }
    return points;
}

} // namespace quorvane
