#include "gui/CardWidget.h"

#include "GuiFakePlatform.h"
#include "app/AppDelegate.h"
#include "fakes/BalanceBody.h"
#include "gui/ChartWidget.h"
#include "gui/ElidedLabel.h"

#include <QFontMetrics>
#include <QImage>
#include <gtest/gtest.h>

#include <memory>

namespace quorvane {
namespace {

class CardWidgetTest : public ::testing::Test {
protected:
    GuiFakePlatform gui;
    AppDelegate delegate{gui.platform()};

    // The dashboard for a successful refresh with this body, as the menu would hold it.
    std::unique_ptr<CardWidget> dashboardFor(const std::string& body) {
        gui.fake.storeKey("sk-test");
        delegate.refreshBalance();
        gui.fake.http.respond(200, body);
        const MenuItem item = delegate.dashboardItem(*delegate.lastResponse());
        return std::make_unique<CardWidget>(*item.card, gui.fake.formatter, gui.fake.clock);
    }

    static std::vector<ElidedLabel*> labels(const CardWidget& card) {
        const QList<ElidedLabel*> found = card.findChildren<ElidedLabel*>(Qt::FindDirectChildrenOnly);
        return std::vector<ElidedLabel*>(found.begin(), found.end());
    }
};

struct LabelCase {
    std::string text;
    QRect geometry;
    int pixelSize;
    QFont::Weight weight;
    QString color;
    Qt::Alignment alignment;
};

TEST_F(CardWidgetTest, DashboardLabelsSitAtTheirFlippedFramesWithTheirFontsAndColours) {
    const auto card = dashboardFor(balanceBody({{"USD", "12.50"}}));
    ASSERT_EQ(card->size(), QSize(330, 190));

    const Qt::Alignment natural = Qt::AlignLeading | Qt::AlignTop;
    const std::vector<LabelCase> cases = {
        {"\xF0\x9F\x90\x8B Quorvane", {18, 10, 290, 22}, 15, QFont::DemiBold, "#d9000000", natural},
        {"$12.50", {18, 34, 150, 34}, 26, QFont::Bold, "#d9000000", natural},
        {"Today $0.00", {18, 68, 140, 18}, 12, QFont::Normal, "#80000000", natural},
        {"Ready",
         {178, 41, 130, 18},
         12,
         QFont::DemiBold,
         "#ff34c759",
         Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignTop},
        {"Updated 0 sec. ago \xE2\x80\xA2 1 min auto-refresh",
         {18, 157, 292, 16},
         11,
         QFont::Normal,
         "#42000000",
         natural},
    };
    const std::vector<ElidedLabel*> shown = labels(*card);
    ASSERT_EQ(shown.size(), cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const LabelCase& expected = cases[i];
        const ElidedLabel& label = *shown[i];
        SCOPED_TRACE(expected.text);
        EXPECT_EQ(label.fullText().toStdString(), expected.text);
        EXPECT_EQ(label.text(), label.fullText()) << "fits without an ellipsis";
        EXPECT_EQ(label.geometry(), expected.geometry);
        EXPECT_EQ(label.font().pixelSize(), expected.pixelSize);
        EXPECT_EQ(label.font().weight(), expected.weight);
        EXPECT_EQ(label.palette().color(QPalette::WindowText).name(QColor::HexArgb), expected.color);
        EXPECT_EQ(label.alignment(), expected.alignment);
        EXPECT_FALSE(label.wordWrap());
    }

    const auto* chart = card->findChild<ChartWidget*>();
    ASSERT_NE(chart, nullptr);
    EXPECT_EQ(chart->geometry(), QRect(18, 96, 292, 52));
    EXPECT_EQ(chart->chart().points().size(), 1u);
    EXPECT_EQ(chart->chart().accentColor(), (NamedColor{ColorName::SystemTeal, 1.0}));
}

TEST_F(CardWidgetTest, AnUnavailableAccountShowsItsStatusWordInRed) {
    const auto card = dashboardFor(balanceBody({{"USD", "25"}}, false));
    const ElidedLabel& status = *labels(*card).at(3);
    EXPECT_EQ(status.text(), "No balance");
    EXPECT_EQ(status.palette().color(QPalette::WindowText).name(QColor::HexArgb), "#ffff3b30");
}

TEST_F(CardWidgetTest, ABalanceTooWideIsCutAtTheTailAndComesBackWhenThereIsRoom) {
    const auto card = dashboardFor(balanceBody({{"USD", "12345678901.25"}}));
    ElidedLabel& balance = *labels(*card).at(1);

    EXPECT_EQ(balance.fullText(), "$12,345,678,901.25");
    EXPECT_TRUE(balance.text().startsWith("$12,")) << balance.text().toStdString();
    EXPECT_TRUE(balance.text().endsWith(QChar(0x2026))) << balance.text().toStdString();
    EXPECT_LE(QFontMetrics(balance.font()).horizontalAdvance(balance.text()), 150);

    // Shown, as in an open menu, so that resizes arrive at once.
    card->show();
    balance.resize(400, 34);
    EXPECT_EQ(balance.text(), "$12,345,678,901.25");
    balance.resize(150, 34);
    EXPECT_TRUE(balance.text().endsWith(QChar(0x2026)));
}

TEST_F(CardWidgetTest, TheStatusCardFlipsItsThreeLabels) {
    const MenuItem item = delegate.statusCard("Quorvane", "No API key yet", "detail");
    const CardWidget card(*item.card, gui.fake.formatter, gui.fake.clock);

    ASSERT_EQ(card.size(), QSize(310, 86));
    std::vector<QRect> geometries;
    for (const ElidedLabel* label : labels(card)) {
        geometries.push_back(label->geometry());
    }
    EXPECT_EQ(geometries, (std::vector<QRect>{{16, 9, 280, 22}, {16, 34, 280, 18}, {16, 57, 280, 16}}));
    EXPECT_EQ(labels(card).at(1)->font().weight(), QFont::Medium);
}

TEST_F(CardWidgetTest, TheCardPaintsNoBackgroundOfItsOwn) {
    const MenuItem item = delegate.statusCard("Quorvane", "No API key yet", "detail");
    CardWidget card(*item.card, gui.fake.formatter, gui.fake.clock);
    QImage image(card.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    card.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);

    EXPECT_EQ(qAlpha(image.pixel(5, 5)), 0) << "outside every label";
    EXPECT_EQ(qAlpha(image.pixel(300, 80)), 0);
    int inked = 0;
    for (int x = 16; x < 296; ++x) {
        for (int y = 9; y < 31; ++y) {
            inked += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
        }
    }
    EXPECT_GT(inked, 50) << "the title is drawn";
}

} // namespace
} // namespace quorvane
