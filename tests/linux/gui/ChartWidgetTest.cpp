#include "gui/ChartWidget.h"

#include "fakes/FakeClock.h"
#include "fakes/FakePlatform.h"
#include "platform/icu/IcuFormatter.h"

#include <QApplication>
#include <QEvent>
#include <QTest>
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

BalancePoint sample(double hoursAfterStart, const char* balance) {
    return BalancePoint{FakePlatform::kStart.plusSeconds(hoursAfterStart * 3600), "USD",
                        Decimal::parse(balance).value()};
}

class ChartWidgetTest : public ::testing::Test {
protected:
    FakeClock clock{FakePlatform::kStart, "UTC"};
    IcuFormatter formatter{"en_US"};
    PaintCounter counter;

    // Shown at the card's size with the paints of showing it already done.
    std::unique_ptr<ChartWidget> shownChart(std::vector<BalancePoint> points) {
        UsageChartView view(Rect{18, 42, 292, 52});
        view.setPoints(std::move(points));
        auto widget = std::make_unique<ChartWidget>(view, formatter, clock);
        widget->move(40, 40);
        widget->installEventFilter(&counter);
        widget->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(widget.get()));
        EXPECT_TRUE(QTest::qWaitFor([this] { return counter.paints > 0; }));
        QApplication::processEvents();
        counter.paints = 0;
        return widget;
    }

    void leave(ChartWidget& widget) {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(&widget, &event);
        QApplication::processEvents();
    }
};

TEST_F(ChartWidgetTest, ThePointerPicksTheNearestSampleAndItsTooltip) {
    const auto widget = shownChart({sample(0, "10"), sample(1, "9.5")});
    ASSERT_EQ(widget->size(), QSize(292, 52));
    EXPECT_TRUE(widget->hasMouseTracking());

    // The plot spans x 12 to 280; its middle, 146, belongs to the later sample.
    QTest::mouseMove(widget.get(), QPoint(100, 20));
    EXPECT_EQ(widget->chart().hoveredIndex(), 0);
    EXPECT_EQ(widget->toolTip().toStdString(), "USD balance: 10\nTime: 11/22/26, 9:00:00\u202fAM");
    EXPECT_TRUE(QTest::qWaitFor([this] { return counter.paints > 0; })) << "a redraw was asked for";
    EXPECT_FALSE(widget->chart().needsDisplay());

    counter.paints = 0;
    QTest::mouseMove(widget.get(), QPoint(146, 20));
    EXPECT_EQ(widget->chart().hoveredIndex(), 1);
    EXPECT_EQ(widget->toolTip().toStdString(),
              "USD balance: 9.5\nTime: 11/22/26, 10:00:00\u202fAM\nUsed since previous: 0.5");
    EXPECT_TRUE(QTest::qWaitFor([this] { return counter.paints > 0; }));

    counter.paints = 0;
    leave(*widget);
    EXPECT_EQ(widget->chart().hoveredIndex(), std::nullopt);
    EXPECT_EQ(widget->toolTip(), QString());
    EXPECT_TRUE(QTest::qWaitFor([this] { return counter.paints > 0; })) << "the marker is taken away";
}

TEST_F(ChartWidgetTest, TheMarginAroundThePlotClearsTheMarker) {
    const auto widget = shownChart({sample(0, "10"), sample(1, "9.5"), sample(2, "9")});
    QTest::mouseMove(widget.get(), QPoint(279, 30));
    ASSERT_EQ(widget->chart().hoveredIndex(), 2);

    QTest::mouseMove(widget.get(), QPoint(285, 30));
    EXPECT_EQ(widget->chart().hoveredIndex(), std::nullopt);
    EXPECT_EQ(widget->toolTip(), QString());
}

TEST_F(ChartWidgetTest, ASingleSampleIgnoresThePointer) {
    const auto widget = shownChart({sample(0, "10")});
    QTest::mouseMove(widget.get(), QPoint(100, 20));
    QTest::mouseMove(widget.get(), QPoint(200, 20));

    EXPECT_EQ(widget->chart().hoveredIndex(), std::nullopt);
    EXPECT_EQ(widget->toolTip(), QString());
    EXPECT_FALSE(widget->chart().needsDisplay());
}

TEST_F(ChartWidgetTest, AResizeReachesTheViewsBounds) {
    const auto widget = shownChart({sample(0, "10"), sample(1, "9.5")});
    widget->resize(200, 40);
    QApplication::processEvents();
    EXPECT_EQ(widget->chart().bounds(), (Rect{0, 0, 200, 40}));

    // The plot is now 12 to 188 wide, so 110 is right of its middle.
    QTest::mouseMove(widget.get(), QPoint(110, 20));
    EXPECT_EQ(widget->chart().hoveredIndex(), 1);
}

} // namespace
} // namespace quorvane
