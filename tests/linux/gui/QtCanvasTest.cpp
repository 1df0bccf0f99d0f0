#include "gui/QtCanvas.h"

#include "fakes/FakePlatform.h"
#include "gui/ColorPalette.h"
#include "gui/EmojiTextLayout.h"
#include "platform/icu/IcuFormatter.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <cstdlib>

namespace quorvane {
namespace {

using Appearance = ColorPalette::Appearance;

struct PaletteCase {
    ColorName name;
    double alpha;
    QString light;
    QString dark;
};

TEST(ColorPaletteTest, NamesResolveToTheSystemColoursOfEachAppearance) {
    const std::vector<PaletteCase> cases = {
        {ColorName::Label, 1.0, "#d9000000", "#d9ffffff"},
        {ColorName::SecondaryLabel, 1.0, "#80000000", "#8cffffff"},
        {ColorName::TertiaryLabel, 1.0, "#42000000", "#40ffffff"},
        {ColorName::Separator, 0.55, "#0e000000", "#0effffff"},
        {ColorName::ControlBackground, 0.55, "#8cffffff", "#8c1e1e1e"},
        {ColorName::WindowBackground, 0.92, "#ebececec", "#eb323232"},
        {ColorName::SystemGreen, 1.0, "#ff34c759", "#ff30d158"},
        {ColorName::SystemRed, 1.0, "#ffff3b30", "#ffff453a"},
        {ColorName::SystemTeal, 0.18, "#2e30b0c7", "#2e40c8e0"},
        {ColorName::SystemOrange, 1.0, "#ffff9500", "#ffff9f0a"},
    };
    const ColorPalette light(Appearance::Light);
    const ColorPalette dark(Appearance::Dark);
    for (const PaletteCase& c : cases) {
        SCOPED_TRACE(std::string(colorNameText(c.name)));
        EXPECT_EQ(light.color(NamedColor{c.name, c.alpha}).name(QColor::HexArgb), c.light);
        EXPECT_EQ(dark.color(NamedColor{c.name, c.alpha}).name(QColor::HexArgb), c.dark);
    }
}

TEST(ColorPaletteTest, ADarkWindowColourChoosesTheDarkAppearance) {
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

    void draw(const std::vector<const char*>& balances) {
        UsageChartView view(Rect{18, 42, 292, 52});
        std::vector<BalancePoint> points;
        for (std::size_t i = 0; i < balances.size(); ++i) {
            points.push_back(BalancePoint{FakePlatform::kStart.plusSeconds(600.0 * static_cast<double>(i)),
                                          "USD", Decimal::parse(balances[i]).value()});
        }
        view.setPoints(points);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        QtCanvas canvas(painter, ColorPalette(Appearance::Light));
        view.draw(canvas, formatter, "UTC");
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

TEST_F(QtCanvasTest, ThePlaceholderIsWrittenFromTheTopOfItsRectangle) {
    draw({"10"});

    // Text in secondaryLabel darkens the white background; the rectangle starts at (16, 21).
    auto darkPixelsInRows = [this](int top, int bottom) {
        int count = 0;
        for (int y = top; y < bottom; ++y) {
            for (int x = 0; x < 292; ++x) {
                const QRgb pixel = image.pixel(x, y);
                count += qAlpha(pixel) > 0 && qRed(pixel) < 200 ? 1 : 0;
            }
        }
        return count;
    };
    EXPECT_GT(darkPixelsInRows(21, 36), 100);
    EXPECT_EQ(darkPixelsInRows(0, 20), 0);
    EXPECT_EQ(darkPixelsInRows(38, 52), 0);
    for (int y = 21; y < 36; ++y) {
        EXPECT_GE(qRed(image.pixel(15, y)), 200) << "nothing left of the rectangle";
    }
}

TEST_F(QtCanvasTest, MeasuredTextIsOneLineInThePixelSize) {
    QPainter painter(&image);
    QtCanvas canvas(painter, ColorPalette(Appearance::Light));
    const Size one = canvas.measureText("10:13 PM  2.5", Font{10, FontWeight::Semibold});
    const Size two = canvas.measureText("10:13 PM  2.5 10:13 PM  2.5", Font{10, FontWeight::Semibold});
    const Size larger = canvas.measureText("10:13 PM  2.5", Font{20, FontWeight::Semibold});

    EXPECT_GT(one.width, 40.0);
    EXPECT_EQ(one.height, two.height);
    EXPECT_NEAR(two.width, 2 * one.width + canvas.measureText(" ", Font{10, FontWeight::Semibold}).width,
                1.0);
    EXPECT_NEAR(larger.width, 2 * one.width, 4.0);
    EXPECT_GT(larger.height, one.height);
}

TEST_F(QtCanvasTest, AnEmojiPresentationSelectorGetsTheColourEmojiFont) {
    auto colouredPixels = [this](const std::string& text) {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        QtCanvas canvas(painter, ColorPalette(Appearance::Light));
        canvas.drawText(text, Rect{0, 0, 320, 80}, Font{40, FontWeight::Regular},
                        NamedColor{ColorName::Label, 1.0});
        painter.end();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = QColor::fromRgba(image.pixel(x, y));
                count += pixel.alpha() > 128 && pixel.saturation() > 60 ? 1 : 0;
            }
        }
        return count;
    };
    // U+26A0 alone is a black sign in the UI font; with U+FE0F it is the yellow emoji.
    EXPECT_EQ(colouredPixels("\xE2\x9A\xA0 x"), 0);
    EXPECT_GT(colouredPixels("\xE2\x9A\xA0\xEF\xB8\x8F x"), 200);
    EXPECT_GT(colouredPixels("\xF0\x9F\x90\x8B x"), 200) << "the whale falls back by itself";

    const QString text =
        QString::fromUtf8("\xE2\x9A\xA0\xEF\xB8\x8F Low \xF0\x9F\x90\x8B 1\xEF\xB8\x8F\xE2\x83\xA3");
    std::vector<std::pair<int, int>> ranges;
    for (const QTextLayout::FormatRange& range : EmojiTextLayout::emojiRanges(text, QFont())) {
        ranges.emplace_back(range.start, range.length);
    }
    EXPECT_EQ(ranges, (std::vector<std::pair<int, int>>{{0, 2}, {10, 3}})) << "the sign and the keycap";
}

} // namespace
} // namespace quorvane
