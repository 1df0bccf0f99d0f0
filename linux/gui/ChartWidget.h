// The dashboard's usage chart as a Qt widget: forwards size, pointer and paints to the core's view.
#pragma once

#include "chart/UsageChartView.h"
#include "platform/Clock.h"
#include "platform/Formatter.h"

#include <QWidget>

namespace quorvane {

// Everything the chart shows and every hover rule is the core's; this widget
// only turns Qt's events into the view's calls and its requests for a redraw
// and a tooltip into Qt's. The formatter and clock outlive the widget.
class ChartWidget : public QWidget {
    Q_OBJECT

public:
    ChartWidget(UsageChartView chart, const Formatter& formatter, const Clock& clock,
                QWidget* parent = nullptr);

    const UsageChartView& chart() const { return m_chart; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void afterPointerEvent();

    UsageChartView m_chart;
    const Formatter& m_formatter;
    const Clock& m_clock;
};

} // namespace quorvane
