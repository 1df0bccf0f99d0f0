#include "balance/AutoRefreshSettings.h"

#include "values/DoubleText.h"

#include <cmath>

namespace quorvane {

AutoRefreshSettings::AutoRefreshSettings(Defaults& defaults)
    : m_defaults(defaults) {}

bool AutoRefreshSettings::autoRefreshEnabled() const {
    const std::string key(kEnabledKey);
    return !m_defaults.hasValue(key) || m_defaults.boolValue(key);
}

double AutoRefreshSettings::currentRefreshInterval() const {
    const double stored = m_defaults.doubleValue(std::string(kIntervalKey));
    return stored > 0.0 ? stored : kDefaultInterval;
}

std::string AutoRefreshSettings::refreshIntervalLabel() const {
    return labelFor(currentRefreshInterval());
}

void AutoRefreshSettings::toggleAutoRefresh() {
    m_defaults.setBool(std::string(kEnabledKey), !autoRefreshEnabled());
}

void AutoRefreshSettings::setRefreshInterval(std::int64_t seconds) {
    m_defaults.setInteger(std::string(kIntervalKey), seconds);
}

std::optional<std::int64_t> AutoRefreshSettings::wholeSeconds(double interval) {
    // 2^63 is exactly representable; anything at or beyond it does not fit.
    constexpr double kLimit = 9223372036854775808.0;
    if (!std::isfinite(interval) || interval >= kLimit || interval <= -kLimit) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(std::trunc(interval));
}

std::string AutoRefreshSettings::labelFor(double interval) {
    const auto seconds = wholeSeconds(interval);
    if (seconds) {
        for (const RefreshIntervalChoice& choice : kChoices) {
            if (choice.seconds == *seconds) {
                return std::string(choice.label);
            }
        }
        return std::to_string(*seconds) + " sec";
    }
    // Only an edited store can hold these; the label still says what the timer does.
    if (!std::isfinite(interval)) {
        return "\xE2\x88\x9E sec"; // ∞
    }
    return DoubleText::shortest(std::trunc(interval), DoubleText::Notation::Fixed) + " sec";
}

} // namespace quorvane
