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
    bool right = false;
};

TEST_F(CardWidgetTest, DashboardLabelsSitAtTheirFlippedFramesWithTheirFontsAndColours) {
    const auto card = dashboardFor(balanceBody({{"USD", "12.50"}}));
    ASSERT_EQ(card->size(), QSize(330, 190));

    const std::vector<LabelCase> cases = {
        {"\xF0\x9F\x90\x8B Quorvane", {18, 10, 290, 22}, 15, QFont::DemiBold, "#d9000000"},
        {"$12.50", {18, 34, 150, 34}, 26, QFont::Bold, "#d9000000"},
        {"Today $0.00", {18, 68, 140, 18}, 12, QFont::Normal, "#80000000"},
        {"Ready", {178, 41, 130, 18}, 12, QFont::DemiBold, "#ff34c759", true},
        {"Updated 0 sec. ago \xE2\x80\xA2 1 min auto-refresh",
         {18, 157, 292, 16},
         11,
         QFont::Normal,
         "#42000000"},
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
        EXPECT_EQ(label.alignment(), expected.right ? Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignTop
                                                    : Qt::AlignLeading | Qt::AlignTop);
        EXPECT_FALSE(label.wordWrap());
    }

    const auto* chart = card->findChild<ChartWidget*>();
    ASSERT_NE(chart, nullptr);
    EXPECT_EQ(chart->geometry(), QRect(18, 96, 292, 52));
    EXPECT_EQ(chart->chart().points().size(), 1u);
    EXPECT_EQ(chart->chart().accentColor(), (NamedColor{ColorName::SystemTeal, 1.0}));
}

// An unavailable account with a balance too wide for its label.
TEST_F(CardWidgetTest, ABalanceTooWideIsCutAtTheTailAndAnUnavailableAccountIsRed) {
    const auto card = dashboardFor(balanceBody({{"USD", "12345678901.25"}}, false));
    const ElidedLabel& status = *labels(*card).at(3);
    EXPECT_EQ(status.text(), "No balance");
    EXPECT_EQ(status.palette().color(QPalette::WindowText).name(QColor::HexArgb), "#ffff3b30");
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

} // namespace
} // namespace quorvane
