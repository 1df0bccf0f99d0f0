// Builds the dashboard and status cards that head the menu, and the relative time they show.
#pragma once

#include "balance/AutoRefreshSettings.h"
#include "menu/Card.h"
#include "platform/Clock.h"
#include "platform/Formatter.h"
#include "tracking/BalanceHistory.h"
#include "tracking/RefreshFacts.h"

#include <optional>
#include <string>

namespace quorvane {

// Cards are values built whole on every menu rebuild; nothing of an earlier
// card is reused, so their texts are those of the moment of the rebuild.
class CardFactory {
public:
    static constexpr Size kDashboardSize{330.0, 190.0};
    static constexpr Size kStatusSize{310.0, 86.0};
    static constexpr Rect kChartFrame{18.0, 42.0, 292.0, 52.0};

    CardFactory(const std::string& appMark, const Formatter& formatter, const Clock& clock,
                const BalanceHistory& history, const AutoRefreshSettings& autoRefresh);

    Card dashboard(const RefreshFacts& facts) const;
    Card status(const std::string& title, const std::string& subtitle, const std::string& detail) const;
    // "never" without a time; otherwise the locale's short relative text ("2 min. ago").
    std::string lastUpdatedText(const std::optional<Timestamp>& lastUpdatedAt) const;

private:
    const std::string& m_appMark;
    const Formatter& m_formatter;
    const Clock& m_clock;
    const BalanceHistory& m_history;
    const AutoRefreshSettings& m_autoRefresh;
};

} // namespace quorvane
