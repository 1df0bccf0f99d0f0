#include "chart/ChartGeometry.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvane {
namespace {

constexpr Rect kCardBounds{0, 0, 292, 52};

std::vector<BalancePoint> series(const std::vector<const char*>& balances) {
    std::vector<BalancePoint> points;
    for (const char* balance : balances) {
        points.push_back({Timestamp{}, "USD", Decimal::parse(balance).value()});
    }
    return points;
}

TEST(ChartGeometryTest, ScaleUsesLowestBalanceAndFlooredRange) {
    struct Case {
        std::vector<const char*> balances;
        const char* minBalance;
        const char* range;
    };
    const Case cases[] = {
        {{"3", "3", "3"}, "3", "0.000001"},
        {{"5", "5.0000005"}, "5", "0.000001"},
        {{"1", "1.000002"}, "1", "0.000002"},
        {{"0.25", "-2", "7"}, "-2", "9"},
        {{}, "0", "0.000001"},
    };
    for (const Case& c : cases) {
        const ChartGeometry geometry(kCardBounds, series(c.balances));
        EXPECT_EQ(geometry.minBalance().toString(), c.minBalance) << c.balances.size();
        EXPECT_EQ(geometry.range().toString(), c.range) << c.balances.size();
    }
}

TEST(ChartGeometryTest, NearestIndexRoundsHalvesToTheRight) {
    struct Case {
        int count;
        double x;
        std::int64_t index;
    };
    const Case cases[] = {
        {3, 78.99, 0}, {3, 79, 1}, {48, 280, 47}, {5, 0, 0}, {5, 292, 4},
    };
    for (const Case& c : cases) {
        const ChartGeometry geometry(kCardBounds, series(std::vector<const char*>(c.count, "1")));
        EXPECT_EQ(geometry.nearestIndex(c.x), c.index) << c.count << " " << c.x;
    }
}

TEST(ChartGeometryTest, BubbleStaysCentredWithinWidthAndMarginLimits) {
    struct Case {
        double sampleX;
        double textWidth;
        Rect bubble;
    };
    const Case cases[] = {
        {146, 60, {100, 6, 92, 22}},  {146, 78, {100, 6, 92, 22}}, {146, 79, {99.5, 6, 93, 22}},
        {146, 100, {89, 6, 114, 22}}, {12, 60, {8, 6, 92, 22}},    {280, 60, {192, 6, 92, 22}},
        {146, 300, {9, 6, 274, 22}},  {12, 300, {8, 6, 274, 22}},  {280, 300, {10, 6, 274, 22}},
    };
    const ChartGeometry geometry(kCardBounds, series({"2", "1"}));
    for (const Case& c : cases) {
        EXPECT_EQ(geometry.bubbleRect(c.sampleX, c.textWidth), c.bubble) << c.sampleX << " " << c.textWidth;
    }
    EXPECT_EQ(ChartGeometry::bubbleTextRect({8, 6, 92, 22}), (Rect{15, 10, 78, 14}));
    // Narrower than its padding: an empty text rect at the bubble's centre.
    EXPECT_EQ(ChartGeometry::bubbleTextRect({8, 6, 10, 6}), (Rect{13, 9, 0, 0}));
}

} // namespace
} // namespace quorvane
