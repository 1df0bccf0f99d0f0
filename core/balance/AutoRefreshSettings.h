// The auto-refresh switch and interval as stored in the settings, with the interval's label and choices.
#pragma once

#include "platform/Defaults.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

struct RefreshIntervalChoice {
    std::string_view label;
    std::int64_t seconds;
};

class AutoRefreshSettings {
public:
    static constexpr std::string_view kEnabledKey = "autoRefreshEnabled";
    static constexpr std::string_view kIntervalKey = "refreshInterval";
    static constexpr double kDefaultInterval = 60.0;
    // The menu's order.
    static constexpr std::array<RefreshIntervalChoice, 4> kChoices = {{
        {"30 sec", 30},
        {"1 min", 60},
        {"5 min", 300},
        {"15 min", 900},
    }};

    explicit AutoRefreshSettings(Defaults& defaults);

    // On unless the store holds a value saying otherwise.
    bool autoRefreshEnabled() const;
    // Seconds; the stored number when it is greater than 0, else 60 (also for
    // NaN). Infinite or huge values pass through: the timer copes with them.
    double currentRefreshInterval() const;
    std::string refreshIntervalLabel() const;

    void toggleAutoRefresh();
    void setRefreshInterval(std::int64_t seconds);

    // The whole-second part of an interval, toward zero; nothing when it is
    // not finite or does not fit a 64-bit integer.
    static std::optional<std::int64_t> wholeSeconds(double interval);
    static std::string labelFor(double interval);

private:
    Defaults& m_defaults;
};

} // namespace quorvane
