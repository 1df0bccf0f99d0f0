// Drawing a card into an image with the desktop app's widgets, and pointing at a chart sample.
#include "cli/CardImage.h"

#include "fakes/DelegateTest.h"

#include <QRect>

namespace quorvane {
namespace {

class CardImageTest : public DelegateTest {
protected:
    // The dashboard after one refresh per balance, a minute apart.
    Card dashboard(const std::vector<std::string>& balances) {
        for (const std::string& balance : balances) {
            refreshWith(200, balanceBody({{"USD", balance}}));
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

// Pointing at a sample changes the chart alone.
TEST_F(CardImageTest, TheCardIsDrawnOnTheMenusBackgroundAndPointsAtItsSamples) {
    const Card card = dashboard({"110.00", "100.00", "105.00"});

    const CardImage::Drawing plain = CardImage::draw(card, std::nullopt, 2);
    const CardImage::Drawing hovered = CardImage::draw(card, 1, 2);

    ASSERT_EQ(plain.outcome, CardImage::Outcome::Drawn);
    ASSERT_EQ(hovered.outcome, CardImage::Outcome::Drawn);
    EXPECT_EQ(qAlpha(plain.image.pixel(0, 0)), 255) << "the menu's panel is under the card";
    EXPECT_EQ(plain.image.pixel(0, 0), plain.image.pixel(plain.image.width() - 1, 0))
        << "no frame of its own";
    // The chart's frame (18, 42, 292, 52) from the bottom left, in the image's top-left coordinates, doubled.
    const auto [inChart, elsewhere] =
        differences(plain.image, hovered.image, QRect(36, 2 * (190 - 42 - 52), 584, 104));
    EXPECT_GT(inChart, 200) << "the marker, its guide line and the value bubble";
    EXPECT_EQ(elsewhere, 0);
    EXPECT_NE(hovered.image, CardImage::draw(card, 2, 2).image);
}

// The one place the one-sample wording is read: the whole-program test hovers past five samples.
TEST_F(CardImageTest, AChartOfOneSampleHasNoLineToPointAt) {
    EXPECT_EQ(CardImage::draw(dashboard({"1"}), 0, 2).message,
              "the chart has no sample 0; it draws no line to point at");
}

} // namespace
} // namespace quorvane
