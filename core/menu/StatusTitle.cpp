#include "menu/StatusTitle.h"

namespace quorvane {

namespace {

// The title stays short: whole cents at most, unlike the menu's four places.
constexpr int kTitleFractionDigits = 2;

std::string_view textOf(StatusTitle::State state) {
    switch (state) {
    case StatusTitle::State::Launched:
        return " DS";
    case StatusTitle::State::Refreshing:
        return " ...";
    case StatusTitle::State::NoKey:
        return " Key?";
    case StatusTitle::State::Failed:
        return " !";
    case StatusTitle::State::NoBalance:
    case StatusTitle::State::Healthy:
    case StatusTitle::State::Low:
        break;
    }
    return " 0";
}

} // namespace

StatusTitle::StatusTitle(std::string_view mark, std::string text, State state)
    : m_mark(mark)
    , m_text(std::move(text))
    , m_state(state) {}

StatusTitle StatusTitle::of(State state, std::string_view appMark) {
    return StatusTitle(appMark, std::string(textOf(state)), state);
}

StatusTitle StatusTitle::forFacts(const RefreshFacts& facts, std::string_view appMark,
                                  const Formatter& formatter) {
    const CurrencyFacts* preferred = facts.preferred();
    if (preferred == nullptr) {
        return of(State::NoBalance, appMark);
    }
    return StatusTitle(preferred->healthy ? appMark : kLowMark,
                       " " + amountText(preferred->remaining, preferred->currency, formatter),
                       preferred->healthy ? State::Healthy : State::Low);
}

std::string StatusTitle::amountText(const Decimal& amount, const std::string& currency,
                                    const Formatter& formatter) {
    return formatter.currency(amount, currency, kTitleFractionDigits).value_or(amount.toString());
}

} // namespace quorvane
