// A status item that records every title, tooltip and menu it is given.
#pragma once

#include "menu/MenuTextRenderer.h"
#include "menu/StatusItem.h"

#include <algorithm>
#include <string>
#include <vector>

namespace quorvane {

class RecordingStatusItem : public StatusItem {
public:
    explicit RecordingStatusItem(bool hasButton = true)
        : m_hasButton(hasButton) {}

    bool hasButton() const override { return m_hasButton; }
    void setTitle(const StatusTitle& title) override { m_titles.push_back(title.full()); }
    void setToolTip(const std::string& toolTip) override { m_toolTips.push_back(toolTip); }
    void attachMenu() override { m_events.push_back("attach menu"); }
    void menuDidChange(const std::vector<MenuItem>& items) override {
        m_menu = items;
        m_events.push_back("menu");
    }

    const std::vector<std::string>& titles() const { return m_titles; }
    std::string title() const { return m_titles.empty() ? std::string() : m_titles.back(); }
    const std::vector<std::string>& toolTips() const { return m_toolTips; }
    const std::vector<MenuItem>& menu() const { return m_menu; }
    std::string menuText() const { return MenuTextRenderer::render(m_menu); }
    int menuChanges() const { return static_cast<int>(std::count(m_events.begin(), m_events.end(), "menu")); }
    const std::vector<std::string>& events() const { return m_events; }

private:
    bool m_hasButton;
    std::vector<std::string> m_titles;
    std::vector<std::string> m_toolTips;
    std::vector<MenuItem> m_menu;
    std::vector<std::string> m_events;
};

} // namespace quorvane
