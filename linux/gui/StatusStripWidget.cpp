#include "gui/StatusStripWidget.h"

#include "gui/EmojiTextLayout.h"
#include "gui/UiFont.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace quorvane {

namespace {

// The size of the macOS menu bar's text, and room either side of it.
constexpr Font kTitleFont{14.0, FontWeight::Regular};
constexpr int kHorizontalPadding = 10;
constexpr int kVerticalPadding = 4;

} // namespace

StatusStripWidget::StatusStripWidget(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , m_font(UiFont::font(kTitleFont)) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    resize(sizeHint());
    placeAtTopRight();
    // A panel that starts after the app, or changes its size, moves the work area.
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        connect(screen, &QScreen::availableGeometryChanged, this, [this] { placeAtTopRight(); });
    }
}

void StatusStripWidget::setTitle(const QString& title) {
    if (title == m_title) {
        return;
    }
    m_title = title;
    updateGeometry();
    resize(sizeHint());
    placeAtTopRight();
    update();
}

QSize StatusStripWidget::sizeHint() const {
    EmojiTextLayout layout(m_title, m_font);
    const QSizeF text = layout.singleLineSize();
    return QSize(static_cast<int>(std::ceil(text.width())) + 2 * kHorizontalPadding,
                 static_cast<int>(std::ceil(text.height())) + 2 * kVerticalPadding);
}

QPoint StatusStripWidget::popupPosition(const QRect& strip, const QSize& popup, const QRect& screen) {
    int x = strip.left();
    int y = strip.bottom() + 1;
    if (y + popup.height() > screen.bottom() + 1) {
        y = strip.top() - popup.height();
    }
    // The left edge wins when the popup is wider than the screen.
    x = std::max(std::min(x, screen.right() + 1 - popup.width()), screen.left());
    y = std::max(y, screen.top());
    return QPoint(x, y);
}

void StatusStripWidget::placeAtTopRight() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) {
        return;
    }
    const QRect available = screen->availableGeometry();
    move(available.right() + 1 - width(), available.top());
}

void StatusStripWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::WindowText));
    EmojiTextLayout layout(m_title, m_font);
    layout.drawLine(painter, rect().adjusted(kHorizontalPadding, 0, -kHorizontalPadding, 0),
                    Qt::AlignLeft | Qt::AlignVCenter);
}

void StatusStripWidget::mousePressEvent(QMouseEvent* event) {
    // On press, as a menu bar opens its menus.
    if (event->button() == Qt::LeftButton) {
        emit clicked();
    }
    QWidget::mousePressEvent(event);
}

} // namespace quorvane
