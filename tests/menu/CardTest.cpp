#include "fakes/DelegateTest.h"

namespace quorvane {
namespace {

using enum ColorName;
using enum FontWeight;

class CardTest : public DelegateTest {
protected:
    Card dashboardFor(const std::string& body) {
        refreshWith(200, body);
        return *delegate.dashboardItem(*delegate.lastResponse()).card;
    }

    // Each label at its place among the card's subviews.
    static void expectLabels(const Card& card, const std::vector<std::pair<std::size_t, CardLabel>>& labels) {
        for (const auto& [index, label] : labels) {
            EXPECT_EQ(std::get<CardLabel>(card.subviews.at(index)), label) << label.text;
        }
    }
};

TEST_F(CardTest, DashboardLaysOutSixSubviewsAtTheirFrames) {
    const Card card = dashboardFor(balanceBody({{"USD", "25"}}, false));
    EXPECT_EQ(card.kind, Card::Kind::Dashboard);
    EXPECT_EQ(card.size, (Size{330, 190}));
    ASSERT_EQ(card.subviews.size(), 6u);
    expectLabels(
        card,
        {
            {0, {"\xF0\x9F\x90\x8B Quorvane", {18, 158, 290, 22}, {15, Semibold}}},
            {1, {"$25.00", {18, 122, 150, 34}, {26, Bold}}},
            {2, {"Today $0.00", {18, 104, 140, 18}, {12, Regular}, {SecondaryLabel, 1}}},
            {3, {"No balance", {178, 131, 130, 18}, {12, Semibold}, {SystemRed, 1}, TextAlignment::Right}},
            {5,
             {"Updated 0 sec. ago \xE2\x80\xA2 1 min auto-refresh",
              {18, 17, 292, 16},
              {11, Regular},
              {TertiaryLabel, 1}}},
        });
    const auto& chart = std::get<UsageChartView>(card.subviews[4]);
    EXPECT_EQ(chart.frame(), (Rect{18, 42, 292, 52}));
    EXPECT_EQ(chart.points().size(), 1u);
    EXPECT_EQ(chart.hoveredIndex(), std::nullopt);

    const Card status = *delegate.statusCard("Quorvane", "Could not refresh balance", "detail").card;
    EXPECT_EQ(status.kind, Card::Kind::Status);
    EXPECT_EQ(status.size, (Size{310, 86}));
    ASSERT_EQ(status.subviews.size(), 3u);
    expectLabels(status, {
                             {0, {"\xF0\x9F\x90\x8B Quorvane", {16, 55, 280, 22}, {15, Semibold}}},
                             {1, {"Could not refresh balance", {16, 34, 280, 18}, {13, Medium}}},
                             {2, {"detail", {16, 13, 280, 16}, {11, Regular}, {SecondaryLabel, 1}}},
                         });
}

TEST_F(CardTest, TheFooterNamesTheIntervalEvenWhenAutoRefreshIsOffAndTheTimeSinceTheUpdate) {
    EXPECT_EQ(delegate.lastUpdatedText(), "never");
    fake.settings.setValue("refreshInterval", std::int64_t{45});
    fake.settings.setValue("autoRefreshEnabled", false);
    const Card card = dashboardFor(balanceBody({{"USD", "25"}}));
    EXPECT_EQ(std::get<CardLabel>(card.subviews[5]).text,
              "Updated 0 sec. ago \xE2\x80\xA2 45 sec auto-refresh");
    fake.clock.advance(3 * 3600 + 5);
    EXPECT_EQ(delegate.lastUpdatedText(), "3 hr. ago");
}

} // namespace
} // namespace quorvane
