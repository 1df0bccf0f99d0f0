// A one-line label that cuts its text at the tail with an ellipsis to fit its width.
#pragma once

#include <QLabel>
#include <QString>

namespace quorvane {

// The cards' frames are fixed, so a text wider than its label is cut, never
// wrapped or grown into. text() is what is shown; fullText() what was given.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    // Qt::ElideNone clips instead, for a text that is meant to be cut off plainly.
    explicit ElidedLabel(const QString& text, Qt::TextElideMode mode = Qt::ElideRight,
                         QWidget* parent = nullptr);

    const QString& fullText() const { return m_fullText; }
    void setFullText(const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void elide();

    QString m_fullText;
    Qt::TextElideMode m_mode;
};

} // namespace quorvane
