#include "gui/QtStatusItem.h"

#include "gui/MarkIcon.h"
#include "menu/StatusTitle.h"
#include "services/QtTimerHold.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>

namespace quorvane {

namespace {

SniIconPixmapList trayIcon(const QString& mark) {
    SniIconPixmapList pixmaps;
    for (const QImage& image : MarkIcon::renderAll(mark)) {
        pixmaps.append(SniIconPixmap::fromImage(image));
    }
    return pixmaps;
}

} // namespace

QtStatusItem::Presentation QtStatusItem::presentationFor(bool hosted, bool wayland) {
    if (hosted) {
        return Presentation::TrayItem;
    }
    return wayland ? Presentation::Window : Presentation::Strip;
}

QtStatusItem::QtStatusItem(QDBusConnection bus, bool wayland, QtTimerHold* timerHold)
    : m_wayland(wayland)
    , m_timerHold(timerHold)
    // Looked up when a command arrives, so menus rendered before the handler was set still reach it.
    , m_renderer([this](MenuCommand command, std::int64_t tag) { perform(command, tag); })
    , m_trayMenu([this](MenuCommand command, std::int64_t tag) { perform(command, tag); },
                 [this] { showDashboard(QPoint()); })
    , m_trayService(m_trayItem, m_trayMenu, std::move(bus)) {
    QObject::connect(&m_strip, &StatusStripWidget::clicked, &m_strip, [this] { popUpMenuUnderStrip(); });
    QObject::connect(&m_trayItem, &StatusNotifierItem::activateRequested, &m_trayItem,
                     [this](const QPoint& position) { showDashboard(position); });
    QObject::connect(&m_trayItem, &StatusNotifierItem::contextMenuRequested, &m_trayItem,
                     [this](const QPoint& position) {
                         if (m_wayland) {
                             showDashboard(position);
                         } else {
                             popUpMenuAt(position);
                         }
                     });
    QObject::connect(&m_trayService, &StatusNotifierService::hostedChanged, &m_trayService,
                     [this](bool hosted) { hostedChanged(hosted); });
    if (m_timerHold) {
        // The menu is open from aboutToShow to aboutToHide, its submenus included.
        QObject::connect(&m_menu, &QMenu::aboutToShow, m_timerHold, &QtTimerHold::hold);
        QObject::connect(&m_menu, &QMenu::aboutToHide, m_timerHold, &QtTimerHold::release);
    }
    m_fallbackDelay.setSingleShot(true);
    m_fallbackDelay.setInterval(kFallbackDelayMs);
    QObject::connect(&m_fallbackDelay, &QTimer::timeout, &m_strip, [this] { present(); });
}

QtStatusItem::~QtStatusItem() = default;

void QtStatusItem::setCommandHandler(MenuRenderer::CommandHandler handler) {
    m_onCommand = std::move(handler);
}

void QtStatusItem::perform(MenuCommand command, std::int64_t tag) {
    if (m_onCommand) {
        m_onCommand(command, tag);
    }
}

void QtStatusItem::setTitle(const StatusTitle& title) {
    m_title = QString::fromStdString(title.full());
    m_strip.setTitle(m_title);
    if (m_window) {
        m_window->setTitle(m_title);
    }

    const QString label = QString::fromStdString(title.text());
    // The panel keeps the label's room while a refresh runs, so the items
    // beside it do not shift left and back every minute.
    if (title.state() != StatusTitle::State::Refreshing || m_labelGuide.size() < label.size()) {
        m_labelGuide = label;
    }
    m_trayItem.setTitle(QString::fromStdString(title.mark()), label, m_labelGuide, trayIcon);
}

void QtStatusItem::setToolTip(const std::string& toolTip) {
    const QString text = QString::fromStdString(toolTip);
    m_strip.setToolTip(text);
    m_trayItem.setToolTipTitle(text);
}

void QtStatusItem::attachMenu() {
    if (m_menuAttached) {
        return;
    }
    m_menuAttached = true;
    m_trayService.start();
    if (m_trayService.hasWatcher()) {
        // The panel is there and is about to show the item: no face of the
        // app's own unless it does not within the delay.
        m_presentation = Presentation::TrayItem;
        m_fallbackDelay.start();
        return;
    }
    present();
}

void QtStatusItem::menuDidChange(const std::vector<MenuItem>& items) {
    m_items = items;
    m_renderer.render(items, m_menu);
    m_trayMenu.setMenu(items);
    // A hidden popover is brought up to date when it next opens.
    if (m_popover && m_popover->isVisible()) {
        m_popover->setMenu(items);
    }
    if (m_window) {
        m_window->setMenu(items);
    }
}

void QtStatusItem::hostedChanged(bool hosted) {
    if (hosted) {
        m_fallbackDelay.stop();
        present();
    } else if (m_presentation == Presentation::TrayItem) {
        if (!m_fallbackDelay.isActive()) {
            m_fallbackDelay.start();
        }
    } else {
        present();
    }
}

void QtStatusItem::present() {
    if (!m_menuAttached) {
        return;
    }
    m_presentation = presentationFor(m_trayService.isHosted(), m_wayland);
    m_strip.setVisible(m_presentation == Presentation::Strip);
    if (m_presentation == Presentation::Window) {
        MenuPanel& window = ensurePanel(m_window, MenuPanel::Role::Window);
        window.setTitle(m_title);
        window.show();
    } else if (m_window) {
        m_window->hide();
    }
    if (m_presentation != Presentation::TrayItem && m_popover) {
        m_popover->hide();
    }
}

MenuPanel& QtStatusItem::ensurePanel(std::unique_ptr<MenuPanel>& panel, MenuPanel::Role role) {
    if (!panel) {
        panel = std::make_unique<MenuPanel>(
            role, [this](MenuCommand command, std::int64_t tag) { perform(command, tag); });
        panel->setMenu(m_items);
        if (role == MenuPanel::Role::Window) {
            QObject::connect(panel.get(), &MenuPanel::closed, panel.get(),
                             [this] { perform(MenuCommand::Quit, 0); });
        } else if (m_timerHold) {
            // The dashboard is the menu opened; the fallback window is the app, always open, and holds
            // nothing.
            QObject::connect(panel.get(), &MenuPanel::shown, m_timerHold, [this] { holdTimers(true); });
            QObject::connect(panel.get(), &MenuPanel::hidden, m_timerHold, [this] { holdTimers(false); });
        }
    }
    return *panel;
}

void QtStatusItem::holdTimers(bool hold) {
    if (hold == m_dashboardHolds) {
        return;
    }
    m_dashboardHolds = hold;
    if (hold) {
        m_timerHold->hold();
    } else {
        m_timerHold->release();
    }
}

void QtStatusItem::showDashboard(const QPoint& position) {
    if (!m_wayland) {
        popUpMenuAt(position);
        return;
    }
    MenuPanel& popover = ensurePanel(m_popover, MenuPanel::Role::Popover);
    // The icon's click toggles the dashboard, as it toggles a menu. A second
    // activation within a double click's time is the same gesture (GNOME's
    // host activates on a double click, and may pass on both of its clicks).
    if (m_dashboardToggled.isValid() && m_dashboardToggled.elapsed() < QApplication::doubleClickInterval()) {
        return;
    }
    m_dashboardToggled.start();
    if (popover.isVisible()) {
        popover.hide();
        return;
    }
    showPopover(popover, m_trayItem.takeActivationToken());
}

void QtStatusItem::showPopover(MenuPanel& popover, const QString& activationToken) {
    popover.setMenu(m_items);
    if (!activationToken.isEmpty()) {
        // Qt hands it to the compositor with the window's activation request.
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    }
    popover.show();
    popover.raise();
    popover.activateWindow();
}

void QtStatusItem::openDashboard(const QString& activationToken) {
    switch (m_presentation) {
    case Presentation::Hidden:
        return;
    case Presentation::Strip:
        popUpMenuUnderStrip();
        return;
    case Presentation::Window:
        if (m_window) {
            showPopover(*m_window, activationToken);
        }
        return;
    case Presentation::TrayItem:
        if (m_wayland) {
            showPopover(ensurePanel(m_popover, MenuPanel::Role::Popover), activationToken);
        } else {
            popUpMenuAt(QPoint());
        }
        return;
    }
}

void QtStatusItem::popUpMenuAt(const QPoint& position) {
    // Hosts that cannot tell where the icon is say (0, 0); the pointer is then the best guess.
    m_menu.popup(position.isNull() ? QCursor::pos() : position);
}

void QtStatusItem::popUpMenuUnderStrip() {
    if (!m_menuAttached) {
        return;
    }
    const QScreen* screen = m_strip.screen();
    const QRect available = screen ? screen->availableGeometry() : m_strip.geometry();
    m_menu.popup(StatusStripWidget::popupPosition(m_strip.frameGeometry(), m_menu.sizeHint(), available));
}

} // namespace quorvane
