#include "menu/LowBalanceNotice.h"

#include "balance/PreferredBalance.h"
#include "menu/StatusTitle.h"

#include <string>

namespace quorvane {

namespace {

std::string recordKey(const std::string& currency) {
    return std::string(LowBalanceNotice::kNotifiedPrefix) + currency;
}

} // namespace

LowBalanceNotice::Step LowBalanceNotice::stepFor(const CurrencyFacts& shown, bool alreadyTold, bool enabled) {
    if (!shown.remainingKnown) {
        return Step::Nothing;
    }
    if (shown.healthy) {
        return alreadyTold ? Step::Forget : Step::Nothing;
    }
    return !alreadyTold && enabled ? Step::Notify : Step::Nothing;
}

Notification LowBalanceNotice::notificationFor(const CurrencyFacts& shown, const Formatter& formatter) {
    return Notification{
        "DeepSeek balance is low",
        StatusTitle::amountText(shown.remaining, shown.currency, formatter) +
            " left, at or below the warning level of " +
            StatusTitle::amountText(lowBalanceThreshold(shown.currency), shown.currency, formatter) + ".",
    };
}

LowBalanceNotice::LowBalanceNotice(Defaults& defaults, const Formatter& formatter)
    : m_defaults(defaults)
    , m_formatter(formatter) {}

bool LowBalanceNotice::enabled() const {
    const std::string key(kEnabledKey);
    return !m_defaults.hasValue(key) || m_defaults.boolValue(key);
}

void LowBalanceNotice::setEnabled(bool enabled) {
    m_defaults.setBool(std::string(kEnabledKey), enabled);
}

std::optional<Notification> LowBalanceNotice::afterRefresh(const RefreshFacts& facts) {
    const CurrencyFacts* shown = facts.preferred();
    if (shown == nullptr) {
        return std::nullopt;
    }
    const std::string key = recordKey(shown->currency);
    switch (stepFor(*shown, m_defaults.boolValue(key), enabled())) {
    case Step::Nothing:
        return std::nullopt;
    case Step::Forget:
        m_defaults.remove(key);
        return std::nullopt;
    case Step::Notify:
        m_defaults.setBool(key, true);
        return notificationFor(*shown, m_formatter);
    }
    return std::nullopt;
}

} // namespace quorvane
