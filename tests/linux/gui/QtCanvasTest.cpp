#include "gui/QtCanvas.h"

#include "fakes/FakePlatform.h"
#include "fakes/UsdChart.h"
#include "gui/ColorPalette.h"
#include "gui/EmojiTextLayout.h"
#include "icu/IcuFormatter.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <cstdlib>

namespace quorvane {
namespace {

using Appearance = ColorPalette::Appearance;

TEST(ColorPaletteTest, NamesResolveToTheSystemColoursOfTheAppearanceTheWindowColourChooses) {
    const std::tuple<ColorName, double, QString, QString> cases[] = {
        {ColorName::Label, 1.0, "#d9000000", "#d9ffffff"},
        // The chart's hover guide: the separator colour at 0.55, not 0.55 of its own 0.10.
        {ColorName::Separator, 0.55, "#8c000000", "#8cffffff"},
        {ColorName::SecondaryLabel, 0.2, "#33000000", "#33ffffff"},
        {ColorName::ControlBackground, 0.55, "#8cffffff", "#8c1e1e1e"},
        {ColorName::SystemGreen, 1.0, "#ff34c759", "#ff30d158"},
        {ColorName::SystemTeal, 0.18, "#2e30b0c7", "#2e40c8e0"},
    };
    for (const auto& [name, alpha, light, dark] : cases) {
        EXPECT_EQ(ColorPalette(Appearance::Light).color(NamedColor{name, alpha}).name(QColor::HexArgb),
                  light);
        EXPECT_EQ(ColorPalette(Appearance::Dark).color(NamedColor{name, alpha}).name(QColor::HexArgb), dark);
    }
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(30, 30, 30));
    EXPECT_EQ(ColorPalette::appearanceOf(palette), Appearance::Dark);
    palette.setColor(QPalette::Window, QColor(239, 239, 239));
    EXPECT_EQ(ColorPalette::appearanceOf(palette), Appearance::Light);
}

// The chart drawn into a transparent image larger than its 292 x 52 bounds.
class QtCanvasTest : public ::testing::Test {
protected:
    IcuFormatter formatter{"en_US"};
    QImage image{320, 80, QImage::Format_ARGB32};

    // Samples ten minutes apart.
    void draw(const std::vector<const char*>& balances) {
        const UsageChartView view = usdChart(formatter, FakePlatform::kStart, 600, balances);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        QtCanvas canvas(painter, ColorPalette(Appearance::Light));
        view.draw(canvas);
    }

    static bool near(QRgb actual, QRgb expected, int tolerance) {
        return std::abs(qRed(actual) - qRed(expected)) <= tolerance &&
               std::abs(qGreen(actual) - qGreen(expected)) <= tolerance &&
               std::abs(qBlue(actual) - qBlue(expected)) <= tolerance &&
               std::abs(qAlpha(actual) - qAlpha(expected)) <= tolerance;
    }
};

TEST_F(QtCanvasTest, TheLineFillAndBackgroundLandWhereTheViewPutsThem) {
    // Flat along the plot's bottom edge (y 40) up to the middle, then up to the top edge (y 12).
    draw({"10", "10", "12"});

    EXPECT_TRUE(near(image.pixel(146, 4), qRgba(255, 255, 255, 140), 1)) << "controlBackground at 0.55";
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << "outside the rounded corner";
    EXPECT_EQ(image.pixel(60, 39), qRgba(48, 176, 199, 255)) << "the teal line, fully covered";
    EXPECT_EQ(image.pixel(60, 40), qRgba(48, 176, 199, 255));
    // Below the rising half of the line: teal at 0.18 over the background.
    EXPECT_TRUE(near(image.pixel(260, 36), qRgba(196, 233, 240, 161), 2)) << std::hex << image.pixel(260, 36);
    EXPECT_TRUE(near(image.pixel(200, 10), qRgba(255, 255, 255, 140), 1)) << "above the line, no fill";

    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (x >= 292 || y >= 52) {
                ASSERT_EQ(qAlpha(image.pixel(x, y)), 0) << "drawn outside the bounds at " << x << "," << y;
            }
        }
    }
}

TEST(EmojiTextLayoutTest, AnEmojiPresentationSelectorOrKeycapGetsTheColourEmojiFont) {
    // U+26A0 with U+FE0F is the yellow emoji; the whale falls back by itself.
    const QString text = QString::fromUtf8(
        "\xE2\x9A\xA0\xEF\xB8\x8F Low \xF0\x9F\x90\x8B 1\xEF\xB8\x8F\xE2\x83\xA3 \xE2\x9A\xA0");
    std::vector<std::pair<int, int>> ranges;
    for (const QTextLayout::FormatRange& range : EmojiTextLayout::emojiRanges(text, QFont())) {
        ranges.emplace_back(range.start, range.length);
    }
    EXPECT_EQ(ranges, (std::vector<std::pair<int, int>>{{0, 2}, {10, 3}}));
}

} // namespace
} // namespace quorvane
