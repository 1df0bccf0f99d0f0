// The menu-bar title as its parts: a one-character mark, the text after it, and the state they show.
#pragma once

#include "platform/Formatter.h"
#include "tracking/RefreshFacts.h"

#include <string>
#include <string_view>

namespace quorvane {

// Shells read the parts instead of taking the joined text apart: the tray
// draws the mark as its icon and the text as its label, and the status line
// styles itself by the state.
class StatusTitle {
public:
    enum class State {
        Launched,
        Refreshing,
        NoKey,
        Failed,
        NoBalance,
        Healthy,
        Low,
    };

    static constexpr std::string_view kAppMark = "\xF0\x9F\x90\x8B";         // 🐋 U+1F40B
    static constexpr std::string_view kLowMark = "\xE2\x9A\xA0\xEF\xB8\x8F"; // ⚠️ U+26A0 U+FE0F
    static constexpr std::string_view kToolTip = "Quorvane";

    // A state that shows no balance (not Healthy or Low), after the app's mark.
    static StatusTitle of(State state, std::string_view appMark);

    // The title after a successful refresh: the preferred balance with at most
    // two fraction digits, marked low at or below its currency's threshold.
    static StatusTitle forFacts(const RefreshFacts& facts, std::string_view appMark,
                                const Formatter& formatter);

    // The balance as the title writes it: the currency with at most two
    // fraction digits, or the plain decimal where the formatter gives nothing.
    static std::string amountText(const Decimal& amount, const std::string& currency,
                                  const Formatter& formatter);

    const std::string& mark() const { return m_mark; }
    // Everything after the mark, starting with its blank.
    const std::string& text() const { return m_text; }
    State state() const { return m_state; }
    // The title as one line, where a platform takes only text.
    std::string full() const { return m_mark + m_text; }

    bool operator==(const StatusTitle&) const = default;

private:
    StatusTitle(std::string_view mark, std::string text, State state);

    std::string m_mark;
    std::string m_text;
    State m_state;
};

} // namespace quorvane
