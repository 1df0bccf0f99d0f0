#include "gui/CardWidget.h"

#include "gui/ChartWidget.h"
#include "gui/ColorPalette.h"
#include "gui/ElidedLabel.h"
#include "gui/UiFont.h"

#include <QPalette>
#include <QResizeEvent>

#include <algorithm>
#include <cmath>

namespace quorvane {

namespace {

int pixels(double points) {
    return static_cast<int>(std::lround(points));
}

// AppKit's labels put their line at the top of the frame, not in its middle.
Qt::Alignment qtAlignment(TextAlignment alignment) {
    switch (alignment) {
    case TextAlignment::Natural:
        return Qt::AlignLeading | Qt::AlignTop;
    case TextAlignment::Right:
        return Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignTop;
    }
    return Qt::AlignLeading | Qt::AlignTop;
}

} // namespace

CardWidget::CardWidget(const Card& card, QWidget* parent)
    : QWidget(parent)
    , m_cardWidth(pixels(card.size.width)) {
    setMinimumWidth(m_cardWidth);
    setFixedHeight(pixels(card.size.height));
    resize(m_cardWidth, height());
    setAutoFillBackground(false);
    // Children are stacked in creation order, so the model's order of adding holds.
    for (const CardSubview& subview : card.subviews) {
        if (const auto* label = std::get_if<CardLabel>(&subview)) {
            addLabel(*label, card.size);
        } else {
            const auto& chart = std::get<UsageChartView>(subview);
            auto* widget = new ChartWidget(chart, this);
            widget->setGeometry(qtFrame(chart.frame(), card.size));
        }
    }
}

QRect CardWidget::qtFrame(const Rect& frame, const Size& cardSize) {
    return QRect(pixels(frame.x), pixels(cardSize.height - frame.y - frame.height), pixels(frame.width),
                 pixels(frame.height));
}

void CardWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int offset = std::max(0, (width() - m_cardWidth) / 2);
    for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        child->move(child->x() + offset - m_offset, child->y());
    }
    m_offset = offset;
}

void CardWidget::addLabel(const CardLabel& label, const Size& cardSize) {
    auto* widget = new ElidedLabel(QString(), label.truncatesTail ? Qt::ElideRight : Qt::ElideNone, this);
    widget->setFont(UiFont::font(label.font));
    QPalette colors = widget->palette();
    colors.setColor(QPalette::WindowText, ColorPalette::forPalette(colors).color(label.color));
    widget->setPalette(colors);
    widget->setAlignment(qtAlignment(label.alignment));
    // A hidden widget gets its resize event only when shown, so the text is
    // cut to the final width and font here, before the card is ever shown.
    widget->setGeometry(qtFrame(label.frame, cardSize));
    widget->setFullText(QString::fromStdString(label.text));
}

} // namespace quorvane
