// The status item on a Linux desktop: the menu-bar strip, a tray icon where there is a tray, and their menu.
#pragma once

#include "gui/MenuRenderer.h"
#include "gui/StatusStripWidget.h"
#include "platform/StatusItem.h"

#include <QMenu>
#include <QString>

#include <memory>

class QSystemTrayIcon;

namespace quorvane {

// Both the strip and the tray icon open the one menu, which is re-rendered
// whole from the delegate's tree on every change. The strip and the tray
// icon appear when the menu is attached, the last step of the launch.
class QtStatusItem : public StatusItem {
public:
    // Needs a QApplication. The formatter and clock outlive the item; commands
    // reach the handler given later, once the delegate that performs them exists.
    QtStatusItem(const Formatter& formatter, const Clock& clock);
    ~QtStatusItem() override;
    QtStatusItem(const QtStatusItem&) = delete;
    QtStatusItem& operator=(const QtStatusItem&) = delete;

    void setCommandHandler(MenuRenderer::CommandHandler handler);

    bool hasButton() const override { return true; }
    void setTitle(const std::string& title) override;
    void setToolTip(const std::string& toolTip) override;
    void attachMenu() override;
    void menuDidChange(const std::vector<MenuItem>& items) override;

    QMenu& menu() { return m_menu; }
    StatusStripWidget& strip() { return m_strip; }

    // The title's first user-perceived character: the whale or the warning sign.
    static QString mark(const QString& title);

private:
    void popUpMenuUnderStrip();
    void popUpMenuAtCursor();
    void updateTrayIcon();

    MenuRenderer::CommandHandler m_onCommand;
    MenuRenderer m_renderer;
    StatusStripWidget m_strip;
    QMenu m_menu;
    std::unique_ptr<QSystemTrayIcon> m_trayIcon;
    QString m_trayMark;
    bool m_menuAttached = false;
};

} // namespace quorvane
