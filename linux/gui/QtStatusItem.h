// The status item on a Linux desktop: an item in the desktop's status area, or a strip or window where none
// is hosted.
#pragma once

#include "gui/MenuPanel.h"
#include "gui/MenuRenderer.h"
#include "gui/StatusStripWidget.h"
#include "menu/StatusItem.h"
#include "tray/DBusMenuExporter.h"
#include "tray/StatusNotifierItem.h"
#include "tray/StatusNotifierService.h"

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QMenu>
#include <QString>
#include <QTimer>

#include <memory>
#include <vector>

namespace quorvane {

class QtTimerHold;

// Exactly one face at a time. Where a panel hosts status items (KDE Plasma,
// GNOME with the AppIndicator extension, XFCE, waybar, ...) the app is a
// StatusNotifierItem: the mark as its icon, the rest of the title as its
// label, the title in its tooltip, the menu over dbusmenu, and the dashboard
// on the primary click. Where none does, a bare X11 screen gets the strip at
// the top right and Wayland a small window. The face follows the panel as
// it comes and goes.
class QtStatusItem : public StatusItem {
public:
    enum class Presentation { Hidden, TrayItem, Strip, Window };

    // A panel that went away is given this long to come back (a restart of
    // waybar, a shell reload) before the app shows a face of its own.
    static constexpr int kFallbackDelayMs = 3000;

    // `wayland`: the display server places every window itself.
    static Presentation presentationFor(bool hosted, bool wayland);

    // Needs a QApplication. Commands reach the handler given later, once the
    // delegate that performs them exists. A disconnected `bus` means no panel
    // can ever host the item. While its menu or dashboard is open, the item
    // holds `timerHold` (if given).
    QtStatusItem(QDBusConnection bus, bool wayland, QtTimerHold* timerHold = nullptr);
    ~QtStatusItem() override;
    QtStatusItem(const QtStatusItem&) = delete;
    QtStatusItem& operator=(const QtStatusItem&) = delete;

    void setCommandHandler(MenuRenderer::CommandHandler handler);

    bool hasButton() const override { return true; }
    void setTitle(const StatusTitle& title) override;
    void setToolTip(const std::string& toolTip) override;
    void attachMenu() override;
    void menuDidChange(const std::vector<MenuItem>& items) override;

    // Brings the dashboard up, never down, for something outside the panel
    // (a notification's click): the popover or menu of the item, or the
    // fallback face. `activationToken`, where the sender gave one, lets the
    // compositor put it in front.
    void openDashboard(const QString& activationToken);

    Presentation presentation() const { return m_presentation; }
    QMenu& menu() { return m_menu; }
    StatusStripWidget& strip() { return m_strip; }
    StatusNotifierItem& trayItem() { return m_trayItem; }
    DBusMenuExporter& trayMenu() { return m_trayMenu; }
    // Made when first shown.
    MenuPanel* popover() { return m_popover.get(); }
    MenuPanel* window() { return m_window.get(); }

private:
    void present();
    void hostedChanged(bool hosted);
    void showDashboard(const QPoint& position);
    void showPopover(MenuPanel& popover, const QString& activationToken);
    // Once per showing of the dashboard, however its show and hide events come.
    void holdTimers(bool hold);
    void popUpMenuAt(const QPoint& position);
    void popUpMenuUnderStrip();
    void perform(MenuCommand command, std::int64_t tag);
    MenuPanel& ensurePanel(std::unique_ptr<MenuPanel>& panel, MenuPanel::Role role);

    const bool m_wayland;
    QtTimerHold* m_timerHold;
    MenuRenderer::CommandHandler m_onCommand;
    MenuRenderer m_renderer;
    StatusStripWidget m_strip;
    QMenu m_menu;
    std::unique_ptr<MenuPanel> m_popover;
    std::unique_ptr<MenuPanel> m_window;
    StatusNotifierItem m_trayItem;
    DBusMenuExporter m_trayMenu;
    StatusNotifierService m_trayService;
    QTimer m_fallbackDelay;
    QElapsedTimer m_dashboardToggled;
    std::vector<MenuItem> m_items;
    QString m_title;
    QString m_labelGuide;
    bool m_menuAttached = false;
    bool m_dashboardHolds = false;
    Presentation m_presentation = Presentation::Hidden;
};

} // namespace quorvane
