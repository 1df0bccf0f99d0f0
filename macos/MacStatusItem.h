// The menu-bar item on NSStatusItem, with the one menu it opens.
#pragma once

#include "menu/StatusItem.h"

#include <memory>
#include <objc/objc.h>
#include <string>
#include <vector>

namespace quorvane {

// The item takes its place in the menu bar (variable length) when this object
// is made and keeps it until this object is destroyed: the status bar holds no
// reference of its own. The menu is one NSMenu for the life of the item; each
// change of the core's tree empties it and fills it with new items.
class MacStatusItem : public StatusItem {
public:
    // Menu commands are sent to `menuTarget`, which is held weakly.
    explicit MacStatusItem(id menuTarget);
    ~MacStatusItem() override;

    MacStatusItem(const MacStatusItem&) = delete;
    MacStatusItem& operator=(const MacStatusItem&) = delete;

    bool hasButton() const override;
    void setTitle(const StatusTitle& title) override;
    void setToolTip(const std::string& toolTip) override;
    void attachMenu() override;
    void menuDidChange(const std::vector<MenuItem>& items) override;

    // Opens the item's menu as a click on it does, for a click elsewhere
    // that asks for the dashboard (the low-balance notice).
    void openMenu();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace quorvane
