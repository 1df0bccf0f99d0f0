// Drawing a card into an image with the desktop app's widgets, and pointing at a chart sample.
#include "cli/CardImage.h"

#include "app/AppDelegate.h"
#include "fakes/BalanceBody.h"
#include "fakes/FakePlatform.h"

#include <QRect>
#include <gtest/gtest.h>

#include <ostream>

namespace quorvane {
namespace {

class CardImageTest : public ::testing::Test {
protected:
    FakePlatform fake;
    AppDelegate delegate{fake.platform()};

    // The dashboard after one refresh per balance, a minute apart.
    Card dashboard(const std::vector<std::string>& balances) {
        fake.storeKey("sk-test");
        for (const std::string& balance : balances) {
            delegate.refreshBalance();
            fake.http.respond(200, balanceBody({{"USD", balance}}));
            fake.clock.advance(60.0);
        }
        return *delegate.menu().front().card;
    }

    // How many pixels differ inside and outside a rectangle.
    static std::pair<int, int> differences(const QImage& a, const QImage& b, const QRect& inside) {
        std::pair<int, int> counts{0, 0};
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x) {
                if (a.pixel(x, y) != b.pixel(x, y)) {
                    ++(inside.contains(x, y) ? counts.first : counts.second);
                }
            }
        }
        return counts;
    }
};

TEST_F(CardImageTest, TheCardIsDrawnAtItsSizeTimesTheScaleOnTheMenusBackground) {
    const Card card = dashboard({"110.00", "100.00"});

    for (int scale : {1, 2, 3}) {
        const CardImage::Drawing drawing =
            CardImage::draw(card, fake.formatter, fake.clock, std::nullopt, scale);
        EXPECT_EQ(drawing.outcome, CardImage::Outcome::Drawn);
        EXPECT_EQ(drawing.image.size(), QSize(330 * scale, 190 * scale));
        EXPECT_EQ(qAlpha(drawing.image.pixel(0, 0)), 255) << "the menu's panel is under the card";
        EXPECT_EQ(drawing.image.pixel(0, 0), drawing.image.pixel(drawing.image.width() - 1, 0))
            << "no frame of its own at the edges";
    }
}

TEST_F(CardImageTest, PointingAtASampleChangesTheChartAlone) {
    const Card card = dashboard({"110.00", "100.00", "105.00"});
    const CardImage::Drawing plain = CardImage::draw(card, fake.formatter, fake.clock, std::nullopt, 1);

    const CardImage::Drawing hovered = CardImage::draw(card, fake.formatter, fake.clock, 1, 1);

    ASSERT_EQ(hovered.outcome, CardImage::Outcome::Drawn);
    // The chart's frame (18, 42, 292, 52) from the bottom left, in the image's top-left coordinates.
    const auto [inChart, elsewhere] =
        differences(plain.image, hovered.image, QRect(18, 190 - 42 - 52, 292, 52));
    EXPECT_GT(inChart, 200) << "the marker, its guide line and the value bubble";
    EXPECT_EQ(elsewhere, 0);
}

TEST_F(CardImageTest, PointingAtDifferentSamplesDrawsDifferentMarkers) {
    const Card card = dashboard({"110.00", "100.00", "105.00"});

    const CardImage::Drawing first = CardImage::draw(card, fake.formatter, fake.clock, 0, 1);
    const CardImage::Drawing last = CardImage::draw(card, fake.formatter, fake.clock, 2, 1);

    EXPECT_NE(first.image, last.image);
}

struct MissingSampleCase {
    const char* name;
    std::vector<std::string> balances;
    std::int64_t index;
    std::string message;
};

void PrintTo(const MissingSampleCase& c, std::ostream* os) {
    *os << c.name;
}

class CardImageMissingSampleTest : public CardImageTest,
                                   public ::testing::WithParamInterface<MissingSampleCase> {};

TEST_P(CardImageMissingSampleTest, ASampleTheChartDoesNotHaveIsNamed) {
    const MissingSampleCase& c = GetParam();
    const Card card = c.balances.empty() ? *delegate.statusCard("Quorvane", "No API key yet", "detail").card
                                         : dashboard(c.balances);

    const CardImage::Drawing drawing = CardImage::draw(card, fake.formatter, fake.clock, c.index, 2);

    EXPECT_EQ(drawing.outcome, CardImage::Outcome::NoSuchSample);
    EXPECT_EQ(drawing.message, c.message);
    EXPECT_TRUE(drawing.image.isNull());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CardImageMissingSampleTest,
    ::testing::Values(
        MissingSampleCase{
            "PastTheEnd", {"1", "2", "3"}, 3, "the chart has no sample 3; its samples are 0 to 2"},
        MissingSampleCase{"Negative", {"1", "2"}, -1, "the chart has no sample -1; its samples are 0 to 1"},
        MissingSampleCase{"OneSample", {"1"}, 0, "the chart has no sample 0; it draws no line to point at"},
        MissingSampleCase{"StatusCard", {}, 0, "the card has no chart to point at"}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace quorvane
