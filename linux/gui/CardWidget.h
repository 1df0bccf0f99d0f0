// A menu card as a Qt widget: every label and the chart placed at its fixed frame.
#pragma once

#include "menu/Card.h"

#include <QRect>
#include <QWidget>

namespace quorvane {

// Drawn 1 px to 1 pt at the card's size, with no background of its own so the
// menu's shows through. Given more width than the card's (a menu whose
// widest item and shortcut column outgrow the card), the card sits in the
// middle of it rather than leaving a strip of menu on one side.
class CardWidget : public QWidget {
    Q_OBJECT

public:
    explicit CardWidget(const Card& card, QWidget* parent = nullptr);

    // A frame given with the origin at the card's bottom left, in Qt's
    // top-left coordinates.
    static QRect qtFrame(const Rect& frame, const Size& cardSize);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void addLabel(const CardLabel& label, const Size& cardSize);

    int m_cardWidth;
    // How far right of their frames the labels and the chart now sit.
    int m_offset = 0;
};

} // namespace quorvane
