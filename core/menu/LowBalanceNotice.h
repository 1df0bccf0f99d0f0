// When the user is told that the shown balance has fallen low, what the notice says, and the record of it.
#pragma once

#include "platform/Defaults.h"
#include "platform/Formatter.h"
#include "platform/Notifier.h"
#include "tracking/RefreshFacts.h"

#include <optional>
#include <string_view>

namespace quorvane {

// Once per fall: the balance the title shows turning low is told once, and
// told again only after a refresh has found it healthy. The record is kept
// per currency in the settings store, so neither staying low nor a restart
// of the app tells it twice. Low means what the title's warning mark means.
class LowBalanceNotice {
public:
    // On unless the user turned it off; a boolean.
    static constexpr std::string_view kEnabledKey = "lowBalanceNotifications";
    // Followed by the currency code; true once that currency's fall was told.
    static constexpr std::string_view kNotifiedPrefix = "lowBalanceNotified.";

    // What a successful refresh does about its shown balance.
    enum class Step {
        Nothing,
        // Tell the user, and record that it was told.
        Notify,
        // Healthy again: forget that a fall was told.
        Forget,
    };

    // A balance whose text held no amount decides nothing. While notices are
    // off a fall is not recorded either, so turning them on while the balance
    // is low tells it at the next refresh.
    static Step stepFor(const CurrencyFacts& shown, bool alreadyTold, bool enabled);

    // The amounts written as the title writes them.
    static Notification notificationFor(const CurrencyFacts& shown, const Formatter& formatter);

    LowBalanceNotice(Defaults& defaults, const Formatter& formatter);

    bool enabled() const;
    void setEnabled(bool enabled);

    // After a successful refresh: the notice to show, if any, with the record
    // of the shown balance's currency brought up to date. Other currencies'
    // records are left as they are.
    std::optional<Notification> afterRefresh(const RefreshFacts& facts);

private:
    Defaults& m_defaults;
    const Formatter& m_formatter;
};

} // namespace quorvane
