// The status item of a command: keeps the title, tooltip and menu the program sets, for printing.
#pragma once

#include "menu/StatusItem.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// It has a button, so every title and tooltip the program sets lands here,
// exactly as the desktop app would show it.
class HeadlessStatusItem : public StatusItem {
public:
    bool hasButton() const override { return true; }
    void setTitle(const StatusTitle& title) override { m_title = title; }
    void setToolTip(const std::string& toolTip) override { m_toolTip = toolTip; }
    void attachMenu() override { m_menuAttached = true; }
    void menuDidChange(const std::vector<MenuItem>& items) override { m_menu = items; }

    // The title as printed; empty until the program sets one.
    std::string title() const { return m_title ? m_title->full() : std::string(); }
    const std::optional<StatusTitle>& titleParts() const { return m_title; }
    const std::string& toolTip() const { return m_toolTip; }
    bool menuAttached() const { return m_menuAttached; }
    // The tree as last rendered.
    const std::vector<MenuItem>& menu() const { return m_menu; }

private:
    std::optional<StatusTitle> m_title;
    std::string m_toolTip;
    bool m_menuAttached = false;
    std::vector<MenuItem> m_menu;
};

} // namespace quorvane
