// A text laid out in one font, with the emoji sequences that ask for colour drawn from the emoji font.
#pragma once

#include <QFont>
#include <QList>
#include <QPainter>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QTextLayout>

namespace quorvane {

// Qt 6.4 picks a glyph from the first family that has it, so a sign the UI
// font also carries ("⚠" in DejaVu Sans) stays monochrome even when the
// variation selector U+FE0F asks for the emoji; those runs get the emoji font
// explicitly. Characters the UI font lacks (the whale) fall back by themselves.
class EmojiTextLayout {
public:
    EmojiTextLayout(const QString& text, const QFont& font);
    EmojiTextLayout(const EmojiTextLayout&) = delete;
    EmojiTextLayout& operator=(const EmojiTextLayout&) = delete;

    // The width of the text on one line and the font's line height.
    QSizeF singleLineSize();

    // On one line, placed in the rectangle by the alignment (left, right or
    // centre; top or vertical centre); what does not fit is clipped.
    void drawLine(QPainter& painter, const QRectF& rect, Qt::Alignment alignment);
    // Wrapped at word boundaries (inside a word only when it is longer than a
    // line) to the rectangle's width, from its top, clipped to it.
    void drawWrapped(QPainter& painter, const QRectF& rect);

    // UTF-16 ranges of the grapheme clusters that carry U+FE0F.
    static QList<QTextLayout::FormatRange> emojiRanges(const QString& text, const QFont& font);

private:
    void layOutSingleLine();

    QTextLayout m_layout;
};

} // namespace quorvane
