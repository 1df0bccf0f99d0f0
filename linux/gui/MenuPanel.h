// The whole menu in a window of its own: the card with its live chart, the lines and the commands.
#pragma once

#include "gui/MenuRenderer.h"
#include "menu/MenuItem.h"

#include <QMenu>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <vector>

class QVBoxLayout;

namespace quorvane {

class ElidedLabel;
class MenuPanelRow;

// Where the status item cannot pop up a menu of its own. On Wayland a client
// cannot place a window, and a popup needs a parent surface and a click of
// its own, while the click on a tray icon belongs to the panel's process. So
// the panel is a small toplevel of fixed size: tiling compositors (sway, i3
// and their kind) float such a window instead of tiling it, and every
// compositor places it wholly on an output.
//
// As a Popover it is the status item's menu: Escape, a command or the loss
// of focus closes it. As a Window it is the app's only face where no panel
// hosts status items: it shows the title and a hint on how to get the
// balance into the top bar, and closing it quits.
class MenuPanel : public QWidget {
    Q_OBJECT

public:
    enum class Role { Popover, Window };

    static constexpr const char* kWindowTitle = "Quorvane";
    // The line under the fallback window's commands on how to get the
    // balance into the panel, for the desktop XDG_CURRENT_DESKTOP names
    // (a colon-separated list, most specific first).
    static QString hintFor(const QString& currentDesktops);

    MenuPanel(Role role, MenuRenderer::CommandHandler onCommand, QWidget* parent = nullptr);
    ~MenuPanel() override;

    Role role() const { return m_role; }
    void setTitle(const QString& title);
    // Replaces every row and the card; an open submenu closes with them.
    void setMenu(const std::vector<MenuItem>& items);

    QList<MenuPanelRow*> rows() const;
    QMenu* openSubmenu() const { return m_submenu; }

signals:
    // The Window was closed by the user.
    void closed();
    // The panel appeared on screen, or left it.
    void shown();
    void hidden();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void closeSubmenu();
    void clearContents();
    void addRow(const MenuItem& item);
    void openSubmenuOf(MenuPanelRow& row);
    void choose(MenuCommand command, std::int64_t tag);
    void closeIfInactive();

    Role m_role;
    MenuRenderer::CommandHandler m_onCommand;
    MenuRenderer m_submenuRenderer;
    QVBoxLayout* m_layout;
    ElidedLabel* m_title = nullptr;
    QWidget* m_contents = nullptr;
    QPointer<QMenu> m_submenu;
};

} // namespace quorvane
