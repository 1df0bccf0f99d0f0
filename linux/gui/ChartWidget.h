// The dashboard's usage chart as a Qt widget: forwards size, pointer and paints to the core's view.
#pragma once

#include "chart/UsageChartView.h"

#include <QWidget>

namespace quorvane {

// Everything the chart shows and every hover rule is the core's; this widget
// only turns Qt's events into the view's calls and its requests for a redraw
// and a tooltip into Qt's.
class ChartWidget : public QWidget {
    Q_OBJECT

public:
    explicit ChartWidget(UsageChartView chart, QWidget* parent = nullptr);

    const UsageChartView& chart() const { return m_chart; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void afterPointerEvent();

    UsageChartView m_chart;
};

} // namespace quorvane
