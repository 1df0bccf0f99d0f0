#include "gui/EmojiTextLayout.h"

#include "gui/UiFont.h"

#include <QFontMetricsF>
#include <QTextBoundaryFinder>
#include <QTextLine>
#include <QTextOption>

namespace quorvane {

namespace {

constexpr char16_t kEmojiPresentationSelector = 0xFE0F;
// Wider than any line the program draws; a nominal width for an unwrapped line.
constexpr qreal kUnboundedWidth = 1.0e6;

} // namespace

EmojiTextLayout::EmojiTextLayout(const QString& text, const QFont& font)
    : m_layout(text, font) {
    m_layout.setFormats(emojiRanges(text, font));
}

QList<QTextLayout::FormatRange> EmojiTextLayout::emojiRanges(const QString& text, const QFont& font) {
    QList<QTextLayout::FormatRange> ranges;
    QTextCharFormat emoji;
    emoji.setFont(UiFont::emojiFont(font));

    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype end = finder.toNextBoundary();
        if (end < 0) {
            end = text.size();
        }
        const QStringView cluster = QStringView(text).sliced(start, end - start);
        if (cluster.contains(QChar(kEmojiPresentationSelector))) {
            ranges.append(
                QTextLayout::FormatRange{static_cast<int>(start), static_cast<int>(end - start), emoji});
        }
        start = end;
    }
    return ranges;
}

void EmojiTextLayout::layOutSingleLine() {
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    m_layout.setTextOption(option);
    m_layout.beginLayout();
    QTextLine line = m_layout.createLine();
    if (line.isValid()) {
        line.setLineWidth(kUnboundedWidth);
        line.setPosition(QPointF(0, 0));
    }
    m_layout.endLayout();
}

QSizeF EmojiTextLayout::singleLineSize() {
    layOutSingleLine();
    const qreal width = m_layout.lineCount() > 0 ? m_layout.lineAt(0).naturalTextWidth() : 0.0;
    return QSizeF(width, QFontMetricsF(m_layout.font()).height());
}

void EmojiTextLayout::drawLine(QPainter& painter, const QRectF& rect, Qt::Alignment alignment) {
    layOutSingleLine();
    if (m_layout.lineCount() == 0) {
        return;
    }
    const QTextLine line = m_layout.lineAt(0);
    qreal x = rect.left();
    if (alignment & Qt::AlignRight) {
        x = rect.right() - line.naturalTextWidth();
    } else if (alignment & Qt::AlignHCenter) {
        x = rect.left() + (rect.width() - line.naturalTextWidth()) / 2;
    }
    qreal y = rect.top();
    if (alignment & Qt::AlignVCenter) {
        y = rect.top() + (rect.height() - line.height()) / 2;
    }
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    m_layout.draw(&painter, QPointF(x, y));
    painter.restore();
}

void EmojiTextLayout::drawWrapped(QPainter& painter, const QRectF& rect) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout.setTextOption(option);
    m_layout.beginLayout();
    qreal y = 0;
    for (QTextLine line = m_layout.createLine(); line.isValid(); line = m_layout.createLine()) {
        line.setLineWidth(rect.width());
        line.setPosition(QPointF(0, y));
        y += line.height();
    }
    m_layout.endLayout();
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    m_layout.draw(&painter, rect.topLeft());
    painter.restore();
}

} // namespace quorvane
