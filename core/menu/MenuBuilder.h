// Builds the whole status-item menu from the delegate's state, top to bottom, on every rebuild.
#pragma once

#include "balance/AutoRefreshSettings.h"
#include "menu/CardFactory.h"
#include "menu/MenuItem.h"
#include "platform/Formatter.h"
#include "tracking/RefreshFacts.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// What the menu shows is a function of this state plus the stored settings
// and history at the moment of the build; the spend comes with the facts.
struct MenuState {
    // Present after a successful refresh, until a failure or a removed key.
    const std::optional<RefreshFacts>& facts;
    const std::optional<std::string>& lastError;
    bool isRefreshing = false;
    // Any stored key counts, the empty text too.
    bool hasKey = false;
};

class MenuBuilder {
public:
    MenuBuilder(const std::string& appMark, const Formatter& formatter,
                const AutoRefreshSettings& autoRefresh, const CardFactory& cards);

    std::vector<MenuItem> build(const MenuState& state) const;

private:
    void addTopSection(std::vector<MenuItem>& menu, const MenuState& state) const;
    void addSummaryLines(std::vector<MenuItem>& menu, const RefreshFacts& facts) const;
    MenuItem detailsSubmenu(const RefreshFacts& facts) const;
    MenuItem settingsSubmenu() const;
    MenuItem refreshIntervalSubmenu() const;
    std::string money(const Decimal& amount, const std::string& currency) const;

    const std::string& m_appMark;
    const Formatter& m_formatter;
    const AutoRefreshSettings& m_autoRefresh;
    const CardFactory& m_cards;
};

} // namespace quorvane
