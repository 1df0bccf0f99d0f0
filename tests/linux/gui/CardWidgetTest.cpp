#include "gui/CardWidget.h"

#include "GuiFakePlatform.h"
#include "app/AppDelegate.h"
#include "fakes/BalanceBody.h"
#include "gui/ChartWidget.h"
#include "gui/ElidedLabel.h"
#include "gui/UiFont.h"

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
        delegate.refreshClicked();
        gui.fake.http.respond(200, body);
        const MenuItem item = delegate.dashboardItem(*delegate.lastResponse());
        return std::make_unique<CardWidget>(*item.card);
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

    // A menu wider than the card (its longest item and shortcut column) keeps the card in its middle.
    card->show();
    card->resize(364, 190);
    EXPECT_EQ(shown[0]->geometry(), QRect(35, 10, 290, 22));
    EXPECT_EQ(chart->geometry(), QRect(35, 96, 292, 52));
    card->resize(330, 190);
    EXPECT_EQ(chart->geometry(), QRect(18, 96, 292, 52));
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

// The frames were drawn for the Mac's system font; Inter keeps its
// proportions. What fits: every USD balance up to $9,999.99, a CNY balance
// up to CN¥999.99 in an English locale, "No balance", and the longest footer
// (59 minutes after a refresh at the 15-minute interval). Wider amounts end
// in an ellipsis, as they do on the Mac.
TEST_F(CardWidgetTest, TheWidestRealisticTextsFitTheirFramesInTheCardsFont) {
    ASSERT_EQ(UiFont::family(), "Inter") << "scripts/install-deps.sh installs fonts-inter";
    struct FitCase {
        std::string body;
        std::size_t label;
        std::string shown;
    };
    const std::string noBalance = R"({"is_available":false,"balance_infos":[]})";
    const std::vector<FitCase> cases = {
        {balanceBody({{"USD", "9999.99"}}), 1, "$9,999.99"},
        {balanceBody({{"USD", "99999.99"}}), 1, "$99,999.\xE2\x80\xA6"},
        {balanceBody({{"CNY", "999.99"}}), 1,
         "CN\xC2\xA5"
         "999.99"},
        {balanceBody({{"CNY", "9999.99"}}), 1,
         "CN\xC2\xA5"
         "9,999\xE2\x80\xA6"},
        {noBalance, 1, "No balance"},
        {noBalance, 3, "No balance"},
        {balanceBody({{"USD", "9999.99"}}), 4, "Updated 59 min. ago \xE2\x80\xA2 15 min auto-refresh"},
    };
    gui.fake.storeKey("sk-test");
    delegate.refreshIntervalClicked(900);
    for (const FitCase& fit : cases) {
        SCOPED_TRACE(fit.shown);
        delegate.refreshClicked();
        gui.fake.http.respond(200, fit.body);
        gui.fake.clock.advance(59 * 60);
        const MenuItem item = delegate.dashboardItem(*delegate.lastResponse());
        const CardWidget card(*item.card);
        EXPECT_EQ(labels(card).at(fit.label)->text().toStdString(), fit.shown);
    }
}

} // namespace
} // namespace quorvane
