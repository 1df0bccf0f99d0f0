#include "SampleSeries.h"

#include <string>

namespace quorvane {

namespace {

// 1 to 7 cents less than the sample before, in a pattern that does not look flat.
Decimal spentBy(std::size_t step) {
    return Decimal::fromInteger(static_cast<std::int64_t>(1 + (step * 5) % 7))
        .dividedBy(Decimal::fromInteger(100))
        .value();
}

} // namespace

std::vector<BalancePoint> SampleSeries::twoCurrencies(std::size_t count, Timestamp newest,
                                                      double spacingSeconds) {
    std::vector<BalancePoint> points;
    points.reserve(count);
    Decimal cny = Decimal::parse("352.40").value();
    Decimal usd = Decimal::parse("48.75").value();
    const std::size_t moments = (count + 1) / 2;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t moment = i / 2;
        const Timestamp at = newest.plusSeconds(-spacingSeconds * static_cast<double>(moments - 1 - moment));
        if (i % 2 == 0) {
            points.push_back(BalancePoint{at, "CNY", cny});
            cny = cny - spentBy(moment);
        } else {
            points.push_back(BalancePoint{at, "USD", usd});
            usd = usd - spentBy(moment);
        }
    }
    return points;
}

std::vector<BalancePoint> SampleSeries::usd(std::size_t count, Timestamp newest, double spacingSeconds) {
    std::vector<BalancePoint> points;
    points.reserve(count);
    Decimal balance = Decimal::parse("48.75").value();
    for (std::size_t i = 0; i < count; ++i) {
        const Timestamp at = newest.plusSeconds(-spacingSeconds * static_cast<double>(count - 1 - i));
        points.push_back(BalancePoint{at, "USD", balance});
        balance = balance - spentBy(i);
    }
    return points;
}

} // namespace quorvane
