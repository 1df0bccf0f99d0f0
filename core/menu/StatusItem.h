// The menu-bar item: a button with a title and tooltip, and the menu it opens.
#pragma once

#include "menu/MenuItem.h"
#include "menu/StatusTitle.h"

#include <string>
#include <vector>

namespace quorvane {

class StatusItem {
public:
    virtual ~StatusItem() = default;

    // The platform may give an item no button; title and tooltip are then skipped.
    virtual bool hasButton() const = 0;
    virtual void setTitle(const StatusTitle& title) = 0;
    virtual void setToolTip(const std::string& toolTip) = 0;

    // The menu is the delegate's and is rebuilt whole; the item renders the
    // new tree each time it is told, never editing it.
    virtual void attachMenu() = 0;
    virtual void menuDidChange(const std::vector<MenuItem>& items) = 0;
};

} // namespace quorvane
