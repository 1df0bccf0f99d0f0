#include "gui/ChartWidget.h"

#include "fakes/FakePlatform.h"
#include "fakes/UsdChart.h"
#include "icu/IcuFormatter.h"
#include "linux/EventLoopWait.h"

#include <QApplication>
#include <QEvent>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

// Counts the paints a widget receives, to tell whether a redraw was asked for.
class PaintCounter : public QObject {
public:
    int paints = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++paints;
        }
        return QObject::eventFilter(watched, event);
    }
};

class ChartWidgetTest : public ::testing::Test {
protected:
    IcuFormatter formatter{"en_US"};
    PaintCounter counter;

    // Shown at the card's size with the paints of showing it already done.
    // Samples an hour apart.
    std::unique_ptr<ChartWidget> shownChart(const std::vector<const char*>& balances) {
        auto widget =
            std::make_unique<ChartWidget>(usdChart(formatter, FakePlatform::kStart, 3600, balances));
        widget->move(40, 40);
        widget->installEventFilter(&counter);
        widget->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(widget.get()));
        EXPECT_TRUE(QTest::qWaitFor([this] { return counter.paints > 0; }));
        QApplication::processEvents();
        counter.paints = 0;
        return widget;
    }
};

TEST_F(ChartWidgetTest, ThePointerPicksTheNearestSampleAndItsTooltipAndLeavingClearsThem) {
    const auto widget = shownChart({"10", "9.5"});
    ASSERT_EQ(widget->size(), QSize(292, 52));
    auto redrawn = [this] {
        return QTest::qWaitFor([this] { return counter.paints > 0; });
    };

    // The plot spans x 12 to 280; its middle, 146, belongs to the later sample.
    QTest::mouseMove(widget.get(), QPoint(100, 20));
    EXPECT_EQ(widget->chart().hoveredIndex(), 0);
    EXPECT_EQ(widget->toolTip().toStdString(), "USD balance: 10\nTime: 11/22/26, 9:00:00\u202fAM");
    EXPECT_TRUE(redrawn());
    EXPECT_FALSE(widget->chart().needsDisplay());

    // The tooltip waits for the pointer to rest (Qt's ToolTip event), and goes when the sample changes.
    EXPECT_FALSE(QToolTip::isVisible());
    QHelpEvent rest(QEvent::ToolTip, QPoint(100, 20), widget->mapToGlobal(QPoint(100, 20)));
    QApplication::sendEvent(widget.get(), &rest);
    ASSERT_TRUE(QToolTip::isVisible());
    EXPECT_EQ(QToolTip::text(), widget->toolTip());

    counter.paints = 0;
    QTest::mouseMove(widget.get(), QPoint(146, 20));
    EXPECT_EQ(widget->chart().hoveredIndex(), 1);
    EXPECT_TRUE(waitUntil([] { return !QToolTip::isVisible(); }, std::chrono::seconds(2)));
    EXPECT_EQ(widget->toolTip().toStdString(),
              "USD balance: 9.5\nTime: 11/22/26, 10:00:00\u202fAM\nUsed since previous: 0.5");
    EXPECT_TRUE(redrawn());

    // The margin around the plot clears the marker.
    QTest::mouseMove(widget.get(), QPoint(285, 30));
    EXPECT_EQ(widget->chart().hoveredIndex(), std::nullopt);
    EXPECT_EQ(widget->toolTip(), QString());

    QTest::mouseMove(widget.get(), QPoint(146, 20));
    counter.paints = 0;
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(widget.get(), &leave);
    EXPECT_EQ(widget->chart().hoveredIndex(), std::nullopt);
    EXPECT_EQ(widget->toolTip(), QString());
    EXPECT_TRUE(redrawn()) << "the marker is taken away";

    // A resize reaches the view's bounds: the plot is now 12 to 188 wide.
    widget->resize(200, 40);
    QApplication::processEvents();
    EXPECT_EQ(widget->chart().bounds(), (Rect{0, 0, 200, 40}));
    QTest::mouseMove(widget.get(), QPoint(110, 20));
    EXPECT_EQ(widget->chart().hoveredIndex(), 1);
}

TEST_F(ChartWidgetTest, ASingleSampleIgnoresThePointer) {
    const auto widget = shownChart({"10"});
    QTest::mouseMove(widget.get(), QPoint(100, 20));
    EXPECT_EQ(widget->chart().hoveredIndex(), std::nullopt);
    EXPECT_EQ(widget->toolTip(), QString());
    EXPECT_FALSE(widget->chart().needsDisplay());
}

} // namespace
} // namespace quorvane
