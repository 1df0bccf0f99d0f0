// The menu-bar strip: a small frameless window at the top right of the screen showing the status title.
#pragma once

#include <QFont>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QWidget>

namespace quorvane {

// A tool window, so the desktop gives it no taskbar entry, kept above other
// windows like a menu bar. It grows and shrinks with its title and stays
// against the right edge of the primary screen.
class StatusStripWidget : public QWidget {
    Q_OBJECT

public:
    explicit StatusStripWidget(QWidget* parent = nullptr);

    const QString& title() const { return m_title; }
    void setTitle(const QString& title);

    QSize sizeHint() const override;

    // Where a popup of that size opens: under the strip's bottom left,
    // pulled back inside the screen, or above the strip when there is no room below.
    static QPoint popupPosition(const QRect& strip, const QSize& popup, const QRect& screen);

signals:
    void clicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void placeAtTopRight();

    QString m_title;
    QFont m_font;
};

} // namespace quorvane
