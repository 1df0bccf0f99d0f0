// The day and user baselines from which spend is derived, kept in the settings store.
#pragma once

#include "balance/BalanceResponse.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "platform/Formatter.h"
#include "values/Decimal.h"

#include <string>
#include <string_view>

namespace quorvane {

// The provider reports only a balance, so spend is a stored balance minus the
// current one: per currency, the balance at the first successful refresh of
// the local day, and the balance at the first successful refresh since the
// user last reset. Baselines are moved only by a new day or a reset, never by a
// top-up, so spend shows again only once the balance falls below them.
class SpendBaselines {
public:
    static constexpr std::string_view kDayKeyKey = "dayKey";
    static constexpr std::string_view kDayStartPrefix = "dayStart.";
    static constexpr std::string_view kFirstStartPrefix = "firstStart.";

    SpendBaselines(Defaults& defaults, const Clock& clock, const Formatter& formatter);

    // "yyyy-MM-dd" of now in the user's calendar day; only ever compared for equality.
    std::string currentDayKey() const;
    void updateBaselinesIfNeeded(const BalanceResponse& response);
    Decimal spentToday(const Decimal& current, const std::string& currency) const;
    Decimal spentSinceBaseline(const Decimal& current, const std::string& currency) const;
    // Forgets the day key and both baselines of the currencies the program
    // knows; any other currency keeps its user baseline.
    void resetBaselines();

private:
    Decimal spentSince(std::string_view prefix, const Decimal& current, const std::string& currency) const;

    Defaults& m_defaults;
    const Clock& m_clock;
    const Formatter& m_formatter;
};

} // namespace quorvane
