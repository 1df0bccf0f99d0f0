#include "cli/CardImage.h"

#include "gui/CardWidget.h"
#include "gui/ChartWidget.h"

#include <QCoreApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOption>

namespace quorvane {

namespace {

// Where the pointer goes for a sample, or why there is no such place.
std::optional<QPointF> samplePosition(const ChartWidget* chart, std::int64_t index, std::string& message) {
    if (chart == nullptr) {
        message = "the card has no chart to point at";
        return std::nullopt;
    }
    const std::optional<Point> location = chart->chart().pointerLocation(index);
    if (!location) {
        const std::size_t count = chart->chart().points().size();
        message = "the chart has no sample " + std::to_string(index) + "; " +
                  (count < 2 ? std::string("it draws no line to point at")
                             : "its samples are 0 to " + std::to_string(count - 1));
        return std::nullopt;
    }
    return QPointF(location->x, location->y);
}

} // namespace

CardImage::Drawing CardImage::draw(const Card& card, std::optional<std::int64_t> hoverIndex, int scale) {
    Drawing drawing;
    CardWidget widget(card);
    // Shown as far as Qt is concerned, so every child has its final size and
    // takes pointer events, yet never mapped on a screen.
    widget.setAttribute(Qt::WA_DontShowOnScreen);
    widget.show();

    if (hoverIndex) {
        auto* chart = widget.findChild<ChartWidget*>();
        const std::optional<QPointF> position = samplePosition(chart, *hoverIndex, drawing.message);
        if (!position) {
            drawing.outcome = Outcome::NoSuchSample;
            return drawing;
        }
        QMouseEvent move(QEvent::MouseMove, *position, chart->mapToGlobal(*position), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(chart, &move);
    }

    QPixmap pixmap(widget.size() * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    // The menu's panel, with its border just outside the picture: the card
    // sits inside a menu, not on a framed panel of its own.
    QMenu menu;
    QStyleOption panel;
    panel.initFrom(&menu);
    panel.rect = widget.rect().adjusted(-1, -1, 1, 1);
    menu.style()->drawPrimitive(QStyle::PE_PanelMenu, &panel, &painter, &menu);
    widget.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    painter.end();
    drawing.image = pixmap.toImage();
    return drawing;
}

} // namespace quorvane
