#include "gui/MenuPanel.h"

#include "gui/CardWidget.h"
#include "gui/ElidedLabel.h"
#include "gui/MenuPanelRow.h"
#include "gui/UiFont.h"
#include "menu/CardFactory.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QStyleOption>
#include <QTimer>
#include <QVBoxLayout>

namespace quorvane {

namespace {

constexpr int kPopoverMargin = 4;
constexpr int kWindowMargin = 12;
constexpr Font kWindowTitleFont{16.0, FontWeight::Semibold};

// Both are windows of their own, so both say what they are in a title bar.
// Their size is fixed, so neither offers to maximise; the dashboard is the
// item's menu, opened and closed from the panel, and does not minimise.
Qt::WindowFlags flagsFor(MenuPanel::Role role) {
    const Qt::WindowFlags flags =
        Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;
    return role == MenuPanel::Role::Window ? flags | Qt::WindowMinimizeButtonHint : flags;
}

} // namespace

MenuPanel::MenuPanel(Role role, MenuRenderer::CommandHandler onCommand, QWidget* parent)
    : QWidget(parent, flagsFor(role))
    , m_role(role)
    , m_onCommand(std::move(onCommand))
    , m_submenuRenderer([this](MenuCommand command, std::int64_t tag) { choose(command, tag); })
    , m_layout(new QVBoxLayout(this)) {
    setWindowTitle(QString::fromLatin1(kWindowTitle));
    // The panel itself holds the focus when it opens, as a menu does: no row
    // is highlighted until the pointer or the arrow keys reach one.
    setFocusPolicy(Qt::StrongFocus);
    const int margin = role == Role::Popover ? kPopoverMargin : kWindowMargin;
    m_layout->setContentsMargins(margin, margin, margin, margin);
    m_layout->setSpacing(role == Role::Popover ? 0 : 8);
    // A fixed size is what makes a tiling compositor float the window.
    m_layout->setSizeConstraint(QLayout::SetFixedSize);
    if (role == Role::Window) {
        auto* title = new ElidedLabel(QString(), Qt::ElideNone, this);
        title->setFont(UiFont::font(kWindowTitleFont));
        m_title = title;
        m_layout->addWidget(m_title);
    }
    m_contents = new QWidget(this);
    m_contents->setLayout(new QVBoxLayout);
    m_contents->layout()->setContentsMargins(0, 0, 0, 0);
    m_contents->layout()->setSpacing(0);
    m_layout->addWidget(m_contents);
    if (role == Role::Window) {
        auto* hint = new QLabel(hintFor(qEnvironmentVariable("XDG_CURRENT_DESKTOP")), this);
        hint->setWordWrap(true);
        hint->setForegroundRole(QPalette::PlaceholderText);
        hint->setFixedWidth(static_cast<int>(CardFactory::kDashboardSize.width));
        m_layout->addWidget(hint);
    }
}

MenuPanel::~MenuPanel() = default;

QString MenuPanel::hintFor(const QString& currentDesktops) {
    for (const QString& desktop : currentDesktops.split(QLatin1Char(':'), Qt::SkipEmptyParts)) {
        if (desktop == QLatin1String("KDE")) {
            return QStringLiteral("For the balance in the panel, add the System Tray widget to it.");
        }
        if (desktop == QLatin1String("XFCE")) {
            return QStringLiteral("For the balance in the panel, add the Status Tray plugin to it.");
        }
        if (desktop == QLatin1String("GNOME")) {
            return QStringLiteral(
                "For the balance in the top bar, install gnome-shell-extension-appindicator "
                "and turn it on in Extensions.");
        }
    }
    return QStringLiteral("For the balance in a panel, give it a system tray, "
                          "or run 'quorvane status --json' from a bar such as waybar.");
}

void MenuPanel::setTitle(const QString& title) {
    if (m_title) {
        m_title->setFullText(title);
        m_title->setMinimumHeight(m_title->sizeHint().height());
    }
}

QList<MenuPanelRow*> MenuPanel::rows() const {
    return m_contents->findChildren<MenuPanelRow*>(Qt::FindDirectChildrenOnly);
}

void MenuPanel::closeSubmenu() {
    if (m_submenu) {
        m_submenu->close();
        m_submenu->deleteLater();
    }
}

void MenuPanel::clearContents() {
    closeSubmenu();
    // Commands leave the rows queued, so no row is on the call stack here.
    const QList<QWidget*> children = m_contents->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    qDeleteAll(children);
    qDeleteAll(m_contents->actions());
}

void MenuPanel::setMenu(const std::vector<MenuItem>& items) {
    const bool hadFocus = m_contents->isAncestorOf(QApplication::focusWidget());
    clearContents();
    for (const MenuItem& item : items) {
        if (item.kind == MenuItem::Kind::Card) {
            if (item.card) {
                m_contents->layout()->addWidget(new CardWidget(*item.card, m_contents));
            }
        } else {
            addRow(item);
        }
    }
    if (hadFocus) {
        setFocus();
    }
}

void MenuPanel::addRow(const MenuItem& item) {
    auto* row = new MenuPanelRow(item, m_contents);
    m_contents->layout()->addWidget(row);
    if (item.kind == MenuItem::Kind::Submenu) {
        connect(row, &MenuPanelRow::triggered, this, [this, row] { openSubmenuOf(*row); });
        return;
    }
    if (!row->isActionable()) {
        return;
    }
    connect(row, &MenuPanelRow::triggered, this,
            [this, command = item.command, tag = item.tag] { choose(command, tag); });
    if (!item.keyEquivalent.empty()) {
        // The menu's key equivalents work while the panel has the focus, as a menu's do while it is open.
        auto* shortcut = new QAction(m_contents);
        shortcut->setShortcut(MenuRenderer::shortcut(item.keyEquivalent));
        shortcut->setShortcutContext(Qt::WindowShortcut);
        connect(shortcut, &QAction::triggered, row, &MenuPanelRow::triggered);
        m_contents->addAction(shortcut);
    }
}

void MenuPanel::openSubmenuOf(MenuPanelRow& row) {
    closeSubmenu();
    m_submenu = new QMenu(this);
    m_submenuRenderer.render(row.item().submenu, *m_submenu);
    m_submenu->popup(row.mapToGlobal(QPoint(row.width(), 0)));
}

void MenuPanel::choose(MenuCommand command, std::int64_t tag) {
    if (m_role == Role::Popover) {
        hide();
    }
    // After the click that chose it has been handled: the command rebuilds
    // this panel, and the key dialog must open once the menu has gone.
    QTimer::singleShot(0, this, [onCommand = m_onCommand, command, tag] {
        if (onCommand) {
            onCommand(command, tag);
        }
    });
}

void MenuPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    setFocus(Qt::PopupFocusReason);
    emit shown();
}

void MenuPanel::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    emit hidden();
}

void MenuPanel::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape:
        if (m_role == Role::Popover) {
            hide();
            return;
        }
        break;
    case Qt::Key_Down:
        focusNextPrevChild(true);
        return;
    case Qt::Key_Up:
        focusNextPrevChild(false);
        return;
    default:
        break;
    }
    QWidget::keyPressEvent(event);
}

void MenuPanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && m_role == Role::Popover && !isActiveWindow()) {
        // Decided once the event that moved the focus is over: the focus may
        // have gone to the panel's own submenu or tooltip.
        QTimer::singleShot(0, this, [this] { closeIfInactive(); });
    }
}

void MenuPanel::closeIfInactive() {
    const bool submenuOpen = m_submenu && m_submenu->isVisible();
    if (isVisible() && !isActiveWindow() && !submenuOpen && !QApplication::activePopupWidget()) {
        hide();
    }
}

void MenuPanel::closeEvent(QCloseEvent* event) {
    event->accept();
    if (m_role == Role::Window) {
        emit closed();
    }
}

void MenuPanel::paintEvent(QPaintEvent* event) {
    if (m_role == Role::Popover) {
        QPainter painter(this);
        QStyleOption option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_PanelMenu, &option, &painter, this);
    }
    QWidget::paintEvent(event);
}

} // namespace quorvane
