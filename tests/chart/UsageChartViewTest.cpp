#include "chart/UsageChartView.h"

#include "chart/ChartGeometry.h"
#include "chart/ChartTexts.h"
#include "fakes/RecordingCanvas.h"
#include "fakes/UsdChart.h"
#include "icu/IcuFormatter.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvane {
namespace {

constexpr const char* kBackground = "fill roundedRect 0 0 292 52 r10 10 controlBackground@0.55";
constexpr const char* kPlaceholder =
    "text \"Usage graph appears after a few refreshes\" in 16 21 268 28 11 medium secondaryLabel@1";

// The first sample's time, 2023-11-14 22:13:20 UTC; the rest follow an hour apart.
const Timestamp kStart = Timestamp::fromUnixSeconds(1700000000);

class UsageChartViewTest : public ::testing::Test {
protected:
    UsageChartView chart(const std::vector<const char*>& balances,
                         NamedColor accent = {ColorName::SystemTeal, 1.0}) const {
        return usdChart(m_formatter, kStart, 3600, balances, accent);
    }
    static std::vector<std::string> drawn(const UsageChartView& view) {
        RecordingCanvas canvas;
        view.draw(canvas);
        return canvas.operations();
    }

    IcuFormatter m_formatter{"en_US"};
};

TEST_F(UsageChartViewTest, HoverMarkerFollowsTheLineInTheAccentColour) {
    UsageChartView view = chart({"1", "5", "3", "2", "1"}, {ColorName::SystemOrange, 0.8});
    view.mouseMoved({150, 39});
    EXPECT_EQ(drawn(view), (std::vector<std::string>{
                               kBackground,
                               "fill path M 12 40 L 79 12 L 146 26 L 213 33 L 280 40 L 280 40 L 12 40 Z "
                               "systemOrange@0.18",
                               "stroke path M 12 40 L 79 12 L 146 26 L 213 33 L 280 40 w2.5 round round "
                               "systemOrange@0.8",
                               "stroke path M 146 12 L 146 40 w1 butt miter separator@0.55",
                               "fill oval 142 22 8 8 systemOrange@0.8",
                               "fill roundedRect 100 6 92 22 r7 7 windowBackground@0.92",
                               "text \"12:13\u202fAM  3\" in 107 10 78 14 10 semibold label@1",
                           }));
    for (std::int64_t i = 0; i < 5; ++i) {
        view.mouseMoved(*view.pointerLocation(i));
        EXPECT_EQ(view.hoveredIndex(), i);
    }
    EXPECT_EQ(view.pointerLocation(5), std::nullopt);
    const std::vector<std::string> atRightEdge = drawn(view);
    ASSERT_EQ(atRightEdge.size(), 7u);
    EXPECT_EQ(atRightEdge[5], "fill roundedRect 192 6 92 22 r7 7 windowBackground@0.92");
}

TEST_F(UsageChartViewTest, FewerThanTwoSamplesShowOnlyThePlaceholderAndIgnoreThePointer) {
    for (const std::vector<const char*>& balances : {std::vector<const char*>{}, {"3"}}) {
        UsageChartView view = chart(balances);
        view.mouseMoved({146, 26});
        EXPECT_FALSE(view.needsDisplay());
        EXPECT_EQ(view.hoveredIndex(), std::nullopt);
        EXPECT_EQ(view.toolTip(), std::nullopt);
        EXPECT_EQ(drawn(view), (std::vector<std::string>{kBackground, kPlaceholder}));
    }
}

// The plot (12, 12, 268, 28) holds its left and top edges only; a pointer halfway between samples takes the
// right one.
TEST_F(UsageChartViewTest, PointerPicksTheNearestSampleOnlyInsideThePlot) {
    const std::pair<Point, std::optional<std::int64_t>> cases[] = {
        {{12, 12}, 0},
        {{145.9, 39.99}, 0},
        {{146, 12}, 1},
        {{279.99, 20}, 1},
        {{146, 40}, std::nullopt},
        {{280, 20}, std::nullopt},
        {{11.99, 20}, std::nullopt},
        {{146, 11.99}, std::nullopt},
    };
    UsageChartView view = chart({"10", "9.5"});
    EXPECT_FALSE(view.needsDisplay());
    for (const auto& [pointer, index] : cases) {
        view.clearNeedsDisplay();
        view.mouseMoved(pointer);
        EXPECT_EQ(view.hoveredIndex(), index) << pointer.x << " " << pointer.y;
        EXPECT_TRUE(view.needsDisplay()) << "marked on every move, the same sample too";
    }
    view.mouseMoved({146, 12});
    EXPECT_EQ(view.toolTip(), "USD balance: 9.5\nTime: 11/14/23, 11:13:20\u202fPM\nUsed since previous: 0.5");
    view.clearNeedsDisplay();
    view.mouseExited();
    EXPECT_EQ(view.hoveredIndex(), std::nullopt);
    EXPECT_EQ(view.toolTip(), std::nullopt);
    EXPECT_TRUE(view.needsDisplay());
}

TEST_F(UsageChartViewTest, HostMarksRedisplayAndSetsTheBounds) {
    UsageChartView view = chart({"2", "1"}, {ColorName::SystemOrange, 1});
    EXPECT_FALSE(view.needsDisplay());
    view.setNeedsDisplay();
    EXPECT_TRUE(view.needsDisplay());

    view.setBoundsSize({200, 40});
    EXPECT_EQ(view.frame(), (Rect{18, 42, 292, 52}));
    EXPECT_EQ(view.bounds(), (Rect{0, 0, 200, 40}));
    EXPECT_EQ(drawn(view), (std::vector<std::string>{
                               "fill roundedRect 0 0 200 40 r10 10 controlBackground@0.55",
                               "fill path M 12 12 L 188 28 L 188 28 L 12 28 Z systemOrange@0.18",
                               "stroke path M 12 12 L 188 28 w2.5 round round systemOrange@1",
                           }));
}

std::vector<BalancePoint> hourly(const std::string& currency, const std::vector<const char*>& balances) {
    std::vector<BalancePoint> points;
    for (const char* balance : balances) {
        const auto hours = static_cast<double>(points.size());
        points.push_back({kStart.plusSeconds(hours * 3600), currency, Decimal::parse(balance).value()});
    }
    return points;
}

TEST(ChartTextsTest, TooltipShowsBalanceTimeAndChangeFromThePreviousSample) {
    struct Case {
        std::vector<const char*> balances;
        std::int64_t index;
        const char* text;
    };
    const Case cases[] = {
        {{"10", "9.5"}, 0, "CNY balance: 10\nTime: 11/14/23, 10:13:20\u202fPM"},
        {{"10", "9.5"}, 1, "CNY balance: 9.5\nTime: 11/14/23, 11:13:20\u202fPM\nUsed since previous: 0.5"},
        {{"9.5", "10"}, 1, "CNY balance: 10\nTime: 11/14/23, 11:13:20\u202fPM\nBalance increased: 0.5"},
        {{"10", "10.00"}, 1, "CNY balance: 10\nTime: 11/14/23, 11:13:20\u202fPM\nNo change since previous"},
    };
    const IcuFormatter formatter("en_US");
    const ChartTexts texts(formatter, "UTC");
    for (const Case& c : cases) {
        EXPECT_EQ(texts.tooltipText(hourly("CNY", c.balances), c.index), c.text);
    }
    const std::vector<BalancePoint> three = hourly("USD", {"3", "2", "1"});
    EXPECT_EQ(texts.tooltipText(three, std::nullopt), std::nullopt);
    EXPECT_EQ(texts.tooltipText(three, -1), std::nullopt);
    EXPECT_EQ(texts.tooltipText(three, 3), std::nullopt);
}

TEST(ChartTextsTest, TheBubbleHasTheShortTimeInTheZoneAndAnAmountOfAtMostFourDigits) {
    const IcuFormatter formatter("en_US");
    EXPECT_EQ(ChartTexts(formatter, "UTC").compactTooltipText(hourly("USD", {"2.50"})[0]),
              "10:13\u202fPM  2.5");
    EXPECT_EQ(ChartTexts(formatter, "Asia/Tokyo").compactTooltipText(hourly("USD", {"1.23456"})[0]),
              "7:13\u202fAM  1.2346");
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
    const ChartGeometry geometry({0, 0, 292, 52}, {{Timestamp{}, "USD", Decimal::parse("2").value()},
                                                   {Timestamp{}, "USD", Decimal::parse("1").value()}});
    for (const Case& c : cases) {
        EXPECT_EQ(geometry.bubbleRect(c.sampleX, c.textWidth), c.bubble) << c.sampleX << " " << c.textWidth;
    }
    EXPECT_EQ(ChartGeometry::bubbleTextRect({8, 6, 92, 22}), (Rect{15, 10, 78, 14}));
    // Narrower than its padding: an empty text rect at the bubble's centre.
    EXPECT_EQ(ChartGeometry::bubbleTextRect({8, 6, 10, 6}), (Rect{13, 9, 0, 0}));
}

} // namespace
} // namespace quorvane
