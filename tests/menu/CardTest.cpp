#include "fakes/DelegateTest.h"

namespace quorvane {
namespace {

const CardLabel& labelAt(const Card& card, std::size_t index) {
    return std::get<CardLabel>(card.subviews.at(index));
}

class CardTest : public DelegateTest {
protected:
    Card dashboardFor(const std::string& body) {
        refreshWith(200, body);
        return *delegate.dashboardItem(*delegate.lastResponse()).card;
    }
};

TEST_F(CardTest, DashboardLaysOutSixSubviewsAtTheirFrames) {
    const Card card = dashboardFor(balanceBody({{"USD", "25"}}, false));
    EXPECT_EQ(card.kind, Card::Kind::Dashboard);
    EXPECT_EQ(card.size, (Size{330, 190}));
    ASSERT_EQ(card.subviews.size(), 6u);

    struct Expected {
        std::size_t index;
        std::string text;
        Rect frame;
        Font font;
        ColorName color;
        TextAlignment alignment;
    };
    using enum ColorName;
    using enum FontWeight;
    constexpr TextAlignment kLeft = TextAlignment::Natural;
    const Expected labels[] = {
        {0, "\xF0\x9F\x90\x8B Quorvane", {18, 158, 290, 22}, {15, Semibold}, Label, kLeft},
        {1, "$25.00", {18, 122, 150, 34}, {26, Bold}, Label, kLeft},
        {2, "Today $0.00", {18, 104, 140, 18}, {12, Regular}, SecondaryLabel, kLeft},
        {3, "No balance", {178, 131, 130, 18}, {12, Semibold}, SystemRed, TextAlignment::Right},
        {5,
         "Updated 0 sec. ago \xE2\x80\xA2 1 min auto-refresh",
         {18, 17, 292, 16},
         {11, Regular},
         TertiaryLabel,
         kLeft},
    };
    for (const Expected& e : labels) {
        const CardLabel& label = labelAt(card, e.index);
        EXPECT_EQ(label.text, e.text);
        EXPECT_EQ(label.frame, e.frame) << e.text;
        EXPECT_EQ(label.font, e.font) << e.text;
        EXPECT_EQ(label.color, (NamedColor{e.color, 1.0})) << e.text;
        EXPECT_EQ(label.alignment, e.alignment) << e.text;
        EXPECT_TRUE(label.truncatesTail) << e.text;
    }
    const auto& chart = std::get<UsageChartView>(card.subviews[4]);
    EXPECT_EQ(chart.frame(), (Rect{18, 42, 292, 52}));
    EXPECT_EQ(chart.points().size(), 1u);
    EXPECT_EQ(chart.accentColor(), (NamedColor{ColorName::SystemTeal, 1.0}));
    EXPECT_EQ(chart.hoveredIndex(), std::nullopt);
}

TEST_F(CardTest, AccentAndStatusFollowTheThresholdAndAvailability) {
    struct Case {
        std::string currency;
        std::string total;
        bool available;
        ColorName accent;
        std::string status;
        ColorName statusColor;
    };
    const Case cases[] = {
        {"USD", "1", true, ColorName::SystemOrange, "Ready", ColorName::SystemGreen},
        {"USD", "1.01", true, ColorName::SystemTeal, "Ready", ColorName::SystemGreen},
        {"CNY", "10", false, ColorName::SystemOrange, "No balance", ColorName::SystemRed},
        {"CNY", "10.01", true, ColorName::SystemTeal, "Ready", ColorName::SystemGreen},
    };
    for (const Case& c : cases) {
        const Card card = dashboardFor(balanceBody({{c.currency, c.total}}, c.available));
        EXPECT_EQ(std::get<UsageChartView>(card.subviews[4]).accentColor().name, c.accent) << c.total;
        EXPECT_EQ(labelAt(card, 3).text, c.status) << c.total;
        EXPECT_EQ(labelAt(card, 3).color.name, c.statusColor) << c.total;
    }
}

TEST_F(CardTest, FooterNamesTheIntervalEvenWhenAutoRefreshIsOff) {
    fake.settings.setValue("refreshInterval", std::int64_t{45});
    fake.settings.setValue("autoRefreshEnabled", false);
    const Card card = dashboardFor(balanceBody({{"USD", "25"}}));
    EXPECT_EQ(labelAt(card, 5).text, "Updated 0 sec. ago \xE2\x80\xA2 45 sec auto-refresh");
}

TEST_F(CardTest, StatusCardCarriesItsThreeTexts) {
    const Card card = *delegate.statusCard("Quorvane", "Could not refresh balance", "detail").card;
    EXPECT_EQ(card.kind, Card::Kind::Status);
    EXPECT_EQ(card.size, (Size{310, 86}));
    ASSERT_EQ(card.subviews.size(), 3u);
    EXPECT_EQ(labelAt(card, 0).text, "\xF0\x9F\x90\x8B Quorvane");
    EXPECT_EQ(labelAt(card, 0).frame, (Rect{16, 55, 280, 22}));
    EXPECT_EQ(labelAt(card, 0).font, (Font{15, FontWeight::Semibold}));
    EXPECT_EQ(labelAt(card, 1).frame, (Rect{16, 34, 280, 18}));
    EXPECT_EQ(labelAt(card, 1).font, (Font{13, FontWeight::Medium}));
    EXPECT_EQ(labelAt(card, 1).color.name, ColorName::Label);
    EXPECT_EQ(labelAt(card, 2).text, "detail");
    EXPECT_EQ(labelAt(card, 2).frame, (Rect{16, 13, 280, 16}));
    EXPECT_EQ(labelAt(card, 2).color.name, ColorName::SecondaryLabel);
}

TEST_F(CardTest, LastUpdatedTextIsNeverOnlyWithoutATime) {
    EXPECT_EQ(delegate.lastUpdatedText(), "never");
    fake.storeKey("sk-test");
    delegate.refreshClicked();
    fake.http.respond(200, balanceBody({{"USD", "5"}}));
    fake.clock.advance(3 * 3600 + 5);
    EXPECT_EQ(delegate.lastUpdatedText(), "3 hr. ago");
}

} // namespace
} // namespace quorvane
