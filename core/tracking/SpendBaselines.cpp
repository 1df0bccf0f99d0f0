#include "tracking/SpendBaselines.h"

#include "balance/ParseAmount.h"

#include <array>

namespace quorvane {

namespace {

// The currencies a reset knows by name, in the order their keys are removed.
constexpr std::array<std::string_view, 2> kResetCurrencies = {"USD", "CNY"};

std::string keyFor(std::string_view prefix, std::string_view currency) {
    std::string key(prefix);
    key += currency;
    return key;
}

} // namespace

SpendBaselines::SpendBaselines(Defaults& defaults, const Clock& clock, const Formatter& formatter)
    : m_defaults(defaults)
    , m_clock(clock)
    , m_formatter(formatter) {}

std::string SpendBaselines::currentDayKey() const {
    return m_formatter.dayKey(m_clock.now(), m_clock.timeZoneId());
}

void SpendBaselines::updateBaselinesIfNeeded(const BalanceResponse& response) {
    const std::string today = currentDayKey();
    const std::string dayKey(kDayKeyKey);
    if (m_defaults.stringValue(dayKey) != today) {
        m_defaults.setString(dayKey, today);
        for (const BalanceInfo& info : response.balanceInfos) {
            m_defaults.setString(keyFor(kDayStartPrefix, info.currency), info.totalBalance);
        }
    }
    for (const BalanceInfo& info : response.balanceInfos) {
        const std::string key = keyFor(kFirstStartPrefix, info.currency);
        if (!m_defaults.stringValue(key)) {
            m_defaults.setString(key, info.totalBalance);
        }
    }
}

Decimal SpendBaselines::spentToday(const Decimal& current, const std::string& currency) const {
    return spentSince(kDayStartPrefix, current, currency);
}

Decimal SpendBaselines::spentSinceBaseline(const Decimal& current, const std::string& currency) const {
    return spentSince(kFirstStartPrefix, current, currency);
}

Decimal SpendBaselines::spentSince(std::string_view prefix, const Decimal& current,
                                   const std::string& currency) const {
    // Without a stored baseline the current balance is its own baseline: no spend.
    const auto stored = m_defaults.stringValue(keyFor(prefix, currency));
    const Decimal start = stored ? parseAmount(*stored) : current;
    const Decimal difference = start - current;
    return Decimal() < difference ? difference : Decimal();
}

void SpendBaselines::resetBaselines() {
    m_defaults.remove(std::string(kDayKeyKey));
    for (std::string_view currency : kResetCurrencies) {
        m_defaults.remove(keyFor(kDayStartPrefix, currency));
        m_defaults.remove(keyFor(kFirstStartPrefix, currency));
    }
}

} // namespace quorvane
