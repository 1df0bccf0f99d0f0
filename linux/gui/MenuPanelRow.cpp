#include "gui/MenuPanelRow.h"

#include "gui/EmojiTextLayout.h"
#include "gui/MenuRenderer.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionMenuItem>

#include <cmath>

namespace quorvane {

namespace {

// Room at either end for the check mark and the submenu arrow the style draws.
constexpr int kLeadingPadding = 28;
constexpr int kTrailingPadding = 28;
constexpr int kShortcutGap = 24;
constexpr int kVerticalPadding = 5;
constexpr int kSeparatorHeight = 9;

} // namespace

MenuPanelRow::MenuPanelRow(const MenuItem& item, QWidget* parent)
    : QWidget(parent)
    , m_item(item) {
    // The panel shows a card as a widget of its own, never as a row.
    m_item.card.reset();
    setFocusPolicy(isActionable() ? Qt::StrongFocus : Qt::NoFocus);
    setAttribute(Qt::WA_Hover, true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

bool MenuPanelRow::isActionable() const {
    switch (m_item.kind) {
    case MenuItem::Kind::Command:
    case MenuItem::Kind::Choice:
    case MenuItem::Kind::Submenu:
        return m_item.enabled;
    default:
        return false;
    }
}

QString MenuPanelRow::shortcutText() const {
    return MenuRenderer::shortcut(m_item.keyEquivalent).toString(QKeySequence::NativeText);
}

QSize MenuPanelRow::sizeHint() const {
    if (m_item.kind == MenuItem::Kind::Separator) {
        return QSize(kLeadingPadding + kTrailingPadding, kSeparatorHeight);
    }
    EmojiTextLayout layout(QString::fromStdString(m_item.title), font());
    const QSizeF text = layout.singleLineSize();
    const QString shortcut = shortcutText();
    const int shortcutWidth =
        shortcut.isEmpty() ? 0 : kShortcutGap + fontMetrics().horizontalAdvance(shortcut);
    return QSize(kLeadingPadding + static_cast<int>(std::ceil(text.width())) + shortcutWidth +
                     kTrailingPadding,
                 static_cast<int>(std::ceil(text.height())) + 2 * kVerticalPadding);
}

bool MenuPanelRow::isHighlighted() const {
    return isActionable() && (m_hovered || hasFocus());
}

void MenuPanelRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOptionMenuItem option;
    option.initFrom(this);
    option.rect = rect();
    option.menuRect = rect();
    option.maxIconWidth = 0;
    option.reservedShortcutWidth = 0;
    option.checkType = m_item.kind == MenuItem::Kind::Choice ? QStyleOptionMenuItem::NonExclusive
                                                             : QStyleOptionMenuItem::NotCheckable;
    option.checked = m_item.checked;
    switch (m_item.kind) {
    case MenuItem::Kind::Separator:
        option.menuItemType = QStyleOptionMenuItem::Separator;
        break;
    case MenuItem::Kind::Submenu:
        option.menuItemType = QStyleOptionMenuItem::SubMenu;
        break;
    default:
        option.menuItemType = QStyleOptionMenuItem::Normal;
        break;
    }
    const bool enabled = m_item.kind != MenuItem::Kind::Informational && m_item.enabled;
    if (!enabled) {
        option.state &= ~QStyle::State_Enabled;
    }
    option.state.setFlag(QStyle::State_Selected, isHighlighted());
    style()->drawControl(QStyle::CE_MenuItem, &option, &painter, this);
    if (m_item.kind == MenuItem::Kind::Separator) {
        return;
    }

    const QPalette::ColorGroup group = enabled ? QPalette::Active : QPalette::Disabled;
    painter.setPen(palette().color(group, isHighlighted() ? QPalette::HighlightedText : QPalette::Text));
    const QRect textRect = rect().adjusted(kLeadingPadding, 0, -kTrailingPadding, 0);
    EmojiTextLayout layout(QString::fromStdString(m_item.title), font());
    layout.drawLine(painter, textRect, Qt::AlignLeft | Qt::AlignVCenter);
    const QString shortcut = shortcutText();
    if (!shortcut.isEmpty()) {
        painter.drawText(textRect, Qt::AlignRight | Qt::AlignVCenter, shortcut);
    }
}

void MenuPanelRow::enterEvent(QEnterEvent* event) {
    m_hovered = true;
    update();
    QWidget::enterEvent(event);
}

void MenuPanelRow::leaveEvent(QEvent* event) {
    m_hovered = false;
    update();
    QWidget::leaveEvent(event);
}

void MenuPanelRow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && isActionable() && rect().contains(event->position().toPoint())) {
        emit triggered();
        return;
    }
    QWidget::mouseReleaseEvent(event);
}

void MenuPanelRow::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool opens = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space ||
                       (key == Qt::Key_Right && m_item.kind == MenuItem::Kind::Submenu);
    if (opens && isActionable()) {
        emit triggered();
        return;
    }
    QWidget::keyPressEvent(event);
}

void MenuPanelRow::focusInEvent(QFocusEvent* event) {
    update();
    QWidget::focusInEvent(event);
}

void MenuPanelRow::focusOutEvent(QFocusEvent* event) {
    update();
    QWidget::focusOutEvent(event);
}

} // namespace quorvane
