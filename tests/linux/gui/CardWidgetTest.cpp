// The cards as the menu draws them: labels at their flipped frames, the chart and the canvas under it, the
// palette.
#include "gui/CardWidget.h"

#include "fakes/UsdChart.h"
#include "gui/ChartWidget.h"
#include "gui/ColorPalette.h"
#include "gui/ElidedLabel.h"
#include "gui/QtCanvas.h"
#include "gui/UiFont.h"
#include "icu/IcuFormatter.h"

#include <QBitmap>
#include <QLabel>
#include <QPainter>
#include <QTest>
#include <gtest/gtest.h>

#include <array>

namespace quorvane {
namespace {

// The smallest rectangle that holds every pixel at least half opaque.
QRect inkOf(const QImage& image) {
    return QRegion(QBitmap::fromImage(image.createAlphaMask())).boundingRect();
}

// Where a widget's own painting leaves ink, without its window's background.
QRect inkOf(QWidget& widget) {
    QImage image(widget.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return inkOf(image);
}

class CardWidgetTest : public ::testing::Test {
protected:
    IcuFormatter formatter{"en_US"};
    // At the dashboard's chart frame.
    UsageChartView chart(double spacingSeconds, const std::vector<const char*>& balances) {
        return usdChart(formatter, Timestamp::fromUnixSeconds(1795338000.0), spacingSeconds, balances);
    }
};

// A balance (left), a status (right) and the chart, framed as the core
// frames them: origin at the card's bottom left. The frames were drawn for
// the Mac's system font; Inter keeps its proportions, so a balance too wide
// for its frame ends in an ellipsis as it does on the Mac.
TEST_F(CardWidgetTest, LabelsAndChartSitAtTheirFlippedFramesInTheirFontsAndColoursCutAtTheTail) {
    ASSERT_EQ(UiFont::family(), "Inter") << "scripts/install-deps.sh installs fonts-inter";
    CardWidget card(Card{Card::Kind::Dashboard,
                         Size{330, 190},
                         {CardLabel{"$99,999.99", Rect{18, 122, 150, 34}, Font{26, FontWeight::Bold}},
                          CardLabel{"Ready", Rect{178, 131, 130, 18}, Font{12, FontWeight::Semibold},
                                    NamedColor{ColorName::SystemGreen, 1.0}, TextAlignment::Right},
                          chart(3600, {"10", "9.5"})}});
    const QList<ElidedLabel*> labels = card.findChildren<ElidedLabel*>();
    ASSERT_EQ(labels.size(), 2);
    ElidedLabel& balance = *labels[0];
    EXPECT_EQ(balance.geometry(), QRect(18, 34, 150, 34));
    EXPECT_EQ(std::make_pair(balance.font().pixelSize(), balance.font().weight()),
              std::make_pair(26, QFont::Bold));
    EXPECT_EQ(balance.palette().color(QPalette::WindowText).name(QColor::HexArgb), "#d9000000");
    EXPECT_EQ(balance.text().toStdString(), "$99,999.\xE2\x80\xA6");
    EXPECT_EQ(labels[1]->palette().color(QPalette::WindowText).name(QColor::HexArgb), "#ff34c759");
    // Drawn where aligned: the balance from its frame's left, the status up to its right.
    EXPECT_NEAR(inkOf(balance).left(), 1, 2);
    EXPECT_NEAR(inkOf(*labels[1]).right(), 128, 2);
    const auto* chartWidget = card.findChild<ChartWidget*>();
    EXPECT_EQ(chartWidget->geometry(), QRect(18, 96, 292, 52));

    // A menu wider than the card (its longest item and shortcut column) keeps the card in its middle.
    card.show();
    card.resize(364, 190);
    EXPECT_EQ(balance.geometry(), QRect(35, 34, 150, 34));
    EXPECT_EQ(chartWidget->geometry(), QRect(35, 96, 292, 52));
    balance.resize(400, 34);
    EXPECT_EQ(balance.text(), "$99,999.99");
}

TEST_F(CardWidgetTest, TheChartFollowsThePointerWithItsTooltip) {
    ChartWidget widget(chart(3600, {"10", "9.5"}));
    widget.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    // The plot spans x 12 to 280; its middle, 146, belongs to the later sample.
    QTest::mouseMove(&widget, QPoint(100, 20));
    EXPECT_EQ(widget.chart().hoveredIndex(), 0);
    EXPECT_EQ(widget.toolTip().toStdString(), "USD balance: 10\nTime: 11/22/26, 9:00:00\u202fAM");
    QTest::mouseMove(&widget, QPoint(146, 20));
    EXPECT_EQ(widget.chart().hoveredIndex(), 1);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&widget, &leave);
    EXPECT_EQ(widget.chart().hoveredIndex(), std::nullopt);
    EXPECT_EQ(widget.toolTip(), QString());
    widget.resize(200, 40);
    EXPECT_EQ(widget.chart().bounds(), (Rect{0, 0, 200, 40}));
}

TEST_F(CardWidgetTest, TheCanvasPutsTheChartsLineFillAndBackgroundWhereTheViewDrawsThem) {
    // Flat along the plot's bottom edge (y 40) up to the middle, then up to
    // its top edge (y 12), drawn into an image larger than the chart.
    QImage image(320, 80, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QtCanvas canvas(painter, ColorPalette(ColorPalette::Appearance::Light));
    chart(600, {"10", "10", "12"}).draw(canvas);
    painter.end();
    EXPECT_EQ(inkOf(image), QRect(0, 0, 292, 52)) << "nothing outside the bounds";
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << "outside the rounded corner";
    EXPECT_EQ(image.pixel(146, 4), qRgba(255, 255, 255, 140)) << "controlBackground at 0.55, above the line";
    EXPECT_EQ(image.pixel(60, 39), qRgba(48, 176, 199, 255)) << "the teal line, fully covered";
    EXPECT_EQ(image.pixel(60, 40), qRgba(48, 176, 199, 255));
    EXPECT_EQ(image.pixel(260, 36), qRgba(196, 233, 239, 161)) << "teal at 0.18 over the background";
}

TEST(ColorPaletteTest, TheWindowColourChoosesTheAppearanceAndAnAskedAlphaReplacesTheColoursOwn) {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(30, 30, 30));
    const ColorPalette dark = ColorPalette::forPalette(palette);
    // The chart's hover guide: the separator colour at 0.55, not 0.55 of its own 0.10.
    EXPECT_EQ(dark.color(NamedColor{ColorName::Separator, 0.55}).name(QColor::HexArgb), "#8cffffff");
    EXPECT_EQ(dark.color(NamedColor{ColorName::SystemTeal, 0.18}).name(QColor::HexArgb), "#2e40c8e0");
}

} // namespace
} // namespace quorvane
