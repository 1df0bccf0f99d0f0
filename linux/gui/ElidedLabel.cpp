#include "gui/ElidedLabel.h"

#include "gui/EmojiTextLayout.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace quorvane {

ElidedLabel::ElidedLabel(const QString& text, Qt::TextElideMode mode, QWidget* parent)
    : QLabel(parent)
    , m_fullText(text)
    , m_mode(mode) {
    setTextFormat(Qt::PlainText);
    setWordWrap(false);
    setTextInteractionFlags(Qt::NoTextInteraction);
    elide();
}

void ElidedLabel::setFullText(const QString& text) {
    m_fullText = text;
    elide();
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    elide();
}

void ElidedLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        elide();
    }
}

void ElidedLabel::elide() {
    const QString shown = QFontMetrics(font()).elidedText(m_fullText, m_mode, contentsRect().width());
    if (shown != text()) {
        setText(shown);
    }
}

// QLabel draws a run in one font; painting the line ourselves lets a
// "⚠️" come out in colour like the whale beside it.
void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    EmojiTextLayout layout(text(), font());
    layout.drawLine(painter, contentsRect(), QStyle::visualAlignment(layoutDirection(), alignment()));
}

} // namespace quorvane
