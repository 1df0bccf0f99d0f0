// The menu the program builds for two currencies, written once, for every rendering of it to match.
#pragma once

#include <string>
#include <string_view>

namespace quorvane {

// How a rendering writes what is not the item's own text: the core's text
// renderer, the QMenu and the dbusmenu layout each mark cards, inert lines,
// check marks and key equivalents their own way.
struct MenuNotation {
    // The card's own line ("[card dashboard]"); empty where the card's labels
    // stand as lines of their own and the chart has none.
    std::string card;
    // Before every line that is not a command, the card's labels included
    // when they stand alone.
    std::string info;
    std::string checked;
    std::string unchecked;
    // The key equivalent after a command's text: "  (r)", "  [Ctrl+R]".
    std::string (*shortcut)(std::string_view key);
};

// The fixed part after the top section: the commands and the settings.
inline std::string expectedCommands(const MenuNotation& n) {
    return "---\n"
           "\xF0\x9F\x94\x84 Refresh Now" +
           n.shortcut("r") + "\n\xF0\x9F\x93\x8B Copy Summary" + n.shortcut("c") +
           "\n"
           "Settings >\n"
           "  \xE2\x8F\xB1 Auto-refresh: On\n"
           "  Refresh Interval: 1 min >\n"
           "    " +
           n.unchecked + "30 sec\n    " + n.checked + "1 min\n    " + n.unchecked + "5 min\n    " +
           n.unchecked +
           "15 min\n"
           "  ---\n"
           "  Set API Key..." +
           n.shortcut(",") +
           "\n"
           "  Reset Spend Baseline\n"
           "  Clear Usage History\n"
           "  Remove API Key\n"
           "  ---\n"
           "  Open DeepSeek Billing" +
           n.shortcut("b") +
           "\n"
           "---\n"
           "\xE2\x8C\x98 Quit" +
           n.shortcut("q") + "\n";
}

// CNY 70.00 then 69.5, USD 12.50 then 0.75 a minute later (low), shown two
// minutes after that with auto-refresh every minute.
inline std::string expectedTwoCurrencyMenu(const MenuNotation& n) {
    const std::string card = n.card.empty() ? n.info : "  ";
    std::string text = n.card.empty() ? "" : n.card + "\n";
    text +=
        card + "\xF0\x9F\x90\x8B Quorvane\n" + card + "$0.75\n" + card + "Today $11.75\n" + card + "Ready\n";
    if (!n.card.empty()) {
        text += "  [chart 2 points]\n";
    }
    text += card + "Updated 2 min. ago \xE2\x80\xA2 1 min auto-refresh\n";
    const std::string i = n.info;
    const std::string d = "  " + n.info;
    return text + "---\n" + i + "Today: $11.75\n" + i + "Baseline: $11.75\n" + i +
           "\xE2\x8F\xB1 Auto-refresh: every 1 min\n"
           "Details >\n" +
           d + "Remaining: CN\xC2\xA5" + "69.50\n" + d + "Granted: CN\xC2\xA5" + "0.00\n" + d +
           "Topped up: CN\xC2\xA5" + "69.50\n" + d + "Today spent: CN\xC2\xA5" + "0.50\n" + d +
           "Since baseline: CN\xC2\xA5" + "0.50\n" + d + "\xF0\x9F\x9F\xA2 Balance looks healthy\n  ---\n" +
           d + "Remaining: $0.75\n" + d + "Granted: $0.00\n" + d + "Topped up: $0.75\n" + d +
           "Today spent: $11.75\n" + d + "Since baseline: $11.75\n" + d +
           "\xE2\x9A\xA0\xEF\xB8\x8F Low balance warning\n  ---\n" + d + "API status: ready\n" + d +
           "Updated: 2 min. ago\n" + expectedCommands(n);
}

} // namespace quorvane
