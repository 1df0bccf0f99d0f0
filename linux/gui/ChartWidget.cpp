#include "gui/ChartWidget.h"

#include "gui/ColorPalette.h"
#include "gui/QtCanvas.h"

#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QToolTip>

namespace quorvane {

ChartWidget::ChartWidget(UsageChartView chart, QWidget* parent)
    : QWidget(parent)
    , m_chart(std::move(chart)) {
    // AppKit's tracking area reports moves with no button held; Qt does so only with tracking on.
    setMouseTracking(true);
    const Rect& frame = m_chart.frame();
    resize(static_cast<int>(frame.width), static_cast<int>(frame.height));
}

void ChartWidget::resizeEvent(QResizeEvent* event) {
    m_chart.setBoundsSize(
        Size{static_cast<double>(event->size().width()), static_cast<double>(event->size().height())});
    QWidget::resizeEvent(event);
}

void ChartWidget::mouseMoveEvent(QMouseEvent* event) {
    const QPointF position = event->position();
    m_chart.mouseMoved(Point{position.x(), position.y()});
    afterPointerEvent();
}

void ChartWidget::leaveEvent(QEvent* event) {
    m_chart.mouseExited();
    afterPointerEvent();
    QWidget::leaveEvent(event);
}

void ChartWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QtCanvas canvas(painter, ColorPalette::forPalette(palette()));
    m_chart.draw(canvas);
    m_chart.clearNeedsDisplay();
}

void ChartWidget::afterPointerEvent() {
    if (m_chart.needsDisplay()) {
        update();
        m_chart.clearNeedsDisplay();
    }
    // The view's tooltip, shown as the system shows one: once the pointer
    // rests, where it rests. A tooltip still showing an older text goes; the
    // new one waits for the next rest.
    const std::optional<std::string>& text = m_chart.toolTip();
    const QString toolTipText = text ? QString::fromStdString(*text) : QString();
    if (toolTipText != toolTip()) {
        setToolTip(toolTipText);
        if (QToolTip::isVisible()) {
            QToolTip::hideText();
        }
    }
}

} // namespace quorvane
