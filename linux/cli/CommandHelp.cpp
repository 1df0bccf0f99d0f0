#include "cli/CommandHelp.h"

#include "balance/AutoRefreshSettings.h"
#include "balance/BalanceRequest.h"
#include "cli/ClipboardHolder.h"

#include <array>
#include <utility>
#include <vector>

namespace quorvane {

namespace {

// Every command that reads the balance first starts as the app does.
constexpr std::string_view kLaunchNote =
    "It starts as the desktop app does (the saved key, one balance refresh,\n"
    "the auto-refresh timer, which it never waits for) and waits for that\n"
    "refresh to end, at most ";

std::string launchNote() {
    return std::string(kLaunchNote) + std::to_string(BalanceRequest::kTimeoutSeconds + 10) +
           " seconds. A failed refresh is shown, not\n"
           "an error: the exit status is still 0.\n";
}

std::string intervalChoices() {
    std::string seconds;
    std::string labels;
    for (const RefreshIntervalChoice& choice : AutoRefreshSettings::kChoices) {
        seconds += (seconds.empty() ? "" : "|") + std::to_string(choice.seconds);
        labels += (labels.empty() ? "" : ", ") + ("\"" + std::string(choice.label) + "\"");
    }
    return seconds + " (or " + labels + ")";
}

std::string statusPage() {
    return "Usage: quorvane [--demo] status [--json]\n\n"
           "Prints the menu-bar title, such as \"\xF0\x9F\x90\x8B $12.34\", on one line.\n\n"
           "--json  prints one line for a waybar custom module instead:\n"
           "        {\"text\":TITLE,\"tooltip\":SUMMARY,\"class\":CLASS}\n"
           "        where SUMMARY is what 'quorvane summary' prints and CLASS is\n"
           "        \"low\" (the balance is low), \"error\" (the refresh failed),\n"
           "        \"nokey\" (no API key saved) or \"ok\".\n\n" +
           launchNote();
}

std::string summaryPage() {
    return "Usage: quorvane [--demo] summary [--copy]\n\n"
           "Prints the plain-text summary that the menu's Copy Summary copies: every\n"
           "currency's balance, today's spend and spend since the baseline.\n\n"
           "--copy  also puts it on the clipboard. On X11 and Wayland a copied text\n"
           "        lives only as long as a program serves it, so the text is handed\n"
           "        to wl-copy, xclip or xsel when one is installed; otherwise a small\n"
           "        background copy of quorvane serves it until another program\n"
           "        takes the clipboard over, or for at most " +
           std::to_string(ClipboardHolder::kLifetime.count()) +
           " minutes. Without a\n"
           "        display (DISPLAY or WAYLAND_DISPLAY) nothing is copied and the\n"
           "        exit status is 1.\n\n" +
           launchNote();
}

std::string menuPage() {
    return "Usage: quorvane [--demo] menu [--json]\n\n"
           "Prints the menu-bar title, then the whole menu, one item a line:\n"
           "cards as \"[card dashboard]\" or \"[card status]\" with their labels\n"
           "indented below, commands with their shortcut key in parentheses,\n"
           "interval choices with \"\xE2\x9C\x93\" on the current one, submenus as \"NAME >\"\n"
           "with their items indented by two blanks, separators as \"---\".\n\n"
           "--json  prints one JSON object instead:\n"
           "        {\"title\":..., \"toolTip\":..., \"menu\":[ITEM...]}\n"
           "        ITEM is {\"separator\":true}, {\"card\":CARD} or {\"title\", \"enabled\",\n"
           "        \"command\" (the handler's name, or null), \"key\", \"tag\", \"state\"\n"
           "        (\"on\" or \"off\"), and on submenus \"submenu\":[ITEM...]}.\n"
           "        CARD is {\"kind\", \"width\", \"height\", \"labels\":[{\"text\", \"frame\",\n"
           "        \"fontSize\", \"fontWeight\", \"color\", \"alignment\"}], \"chart\"}, frames\n"
           "        [x, y, width, height] in points from the card's bottom left; \"chart\"\n"
           "        is null or {\"frame\", \"accentColor\", \"points\":[{\"timestamp\" (ISO\n"
           "        8601, UTC), \"currency\", \"balance\" (exact decimal text)}]}.\n\n" +
           launchNote();
}

std::string cardPage() {
    return "Usage: quorvane [--demo] card --png FILE [--hover INDEX] [--scale N]\n\n"
           "Draws the menu's first item, the dashboard card (or the status card when\n"
           "there is no balance), as the desktop app draws it, into a PNG file. It\n"
           "needs no display.\n\n"
           "--png FILE      where to write the image\n"
           "--hover INDEX   draw the chart as if the pointer rested on sample INDEX\n"
           "                (0 is the oldest); an index the chart does not have is a\n"
           "                usage error\n"
           "--scale N       pixels per point, 1 to 8 (default 2)\n\n" +
           launchNote();
}

std::string keyPage() {
    return "Usage: quorvane [--demo] key set\n"
           "       quorvane [--demo] key remove\n\n"
           "key set     saves the DeepSeek API key, as the Set API Key dialog's Save\n"
           "            does: read from standard input when it is not a terminal\n"
           "            (printf '%s' \"$KEY\" | quorvane key set), else asked for on the\n"
           "            terminal without echo. Blanks and line breaks around it are\n"
           "            dropped. It then forgets the spend baselines, refreshes once\n"
           "            and prints the menu-bar title. A blank key changes nothing and\n"
           "            exits with status 1. The key is never taken from the command\n"
           "            line, where other users could see it, and never printed.\n"
           "key remove  forgets the saved key and prints \"API key removed.\"\n\n"
           "The key lives in the desktop's Secret Service, or in a file that only you\n"
           "can read ($XDG_CONFIG_HOME/quorvane/secrets) where none answers;\n"
           "QUORVANE_SECRET_STORE=secret-service or =file decides without asking.\n";
}

std::string baselinePage() {
    return "Usage: quorvane [--demo] baseline reset\n\n"
           "Forgets the spend baselines, as the menu's Reset Spend Baseline does, so\n"
           "that today's spend and the spend since the baseline count from the next\n"
           "reading; then refreshes once and prints the menu-bar title.\n";
}

std::string historyPage() {
    return "Usage: quorvane [--demo] history clear\n\n"
           "Forgets the balance history behind the chart, as the menu's Clear Usage\n"
           "History does, and prints \"Usage history cleared.\". Nothing is refreshed.\n";
}

std::string autoRefreshPage() {
    return "Usage: quorvane [--demo] auto-refresh on|off\n\n"
           "Switches refreshing on a timer on or off for the desktop app (a change only\n"
           "when the setting differs) and prints the setting, \"Auto-refresh: on, every\n"
           "1 min\" or \"Auto-refresh: off\".\n";
}

std::string intervalPage() {
    return "Usage: quorvane [--demo] interval " + intervalChoices() +
           "\n\n"
           "Sets the seconds between automatic refreshes, as the menu's Refresh\n"
           "Interval does, and prints \"Refresh interval: 5 min\"; when auto-refresh is\n"
           "off, \" (auto-refresh is off)\" follows.\n";
}

std::string notificationsPage() {
    return "Usage: quorvane [--demo] notifications on|off|status\n\n"
           "on      the desktop app shows a desktop notification when the balance\n"
           "        in the menu bar falls low (the title's warning mark), once per\n"
           "        fall: again only after a refresh has found it above the warning\n"
           "        level. This is the default.\n"
           "off     no notifications; the warning mark still shows\n"
           "status  changes nothing\n\n"
           "Each prints the setting as it then is: \"Low-balance notifications: on\"\n"
           "or \"Low-balance notifications: off\". Nothing is refreshed, and no\n"
           "command ever shows a notification. Clicking a notification opens the\n"
           "dashboard, where the desktop's notifications offer clicks.\n";
}

std::string autostartPage() {
    return "Usage: quorvane autostart on|off|status\n\n"
           "on      starts the desktop app whenever you log in, through an entry in\n"
           "        $XDG_CONFIG_HOME/autostart/ (~/.config/autostart/), which every\n"
           "        desktop that follows the XDG autostart standard reads\n"
           "off     removes that entry\n"
           "status  says whether the entry is there\n\n"
           "The desktop app's menu has no such item: launching at login is set here.\n";
}

} // namespace

std::string CommandHelp::overview() {
    return "Usage: quorvane [--demo] [COMMAND [ARGUMENTS]]\n\n"
           "Keeps your DeepSeek API balance in the menu bar. Without a command it starts\n"
           "the desktop app; with one, it does that and exits.\n\n"
           "Commands:\n"
           "  status [--json]          print the menu-bar title (--json: for waybar)\n"
           "  summary [--copy]         print the plain-text summary (--copy: and copy it)\n"
           "  menu [--json]            print the whole menu\n"
           "  card --png FILE [--hover INDEX] [--scale N]\n"
           "                           draw the menu's card into a PNG file\n"
           "  key set                  save the API key, read from standard input\n"
           "  key remove               forget the API key\n"
           "  baseline reset           count spend from the next reading on\n"
           "  history clear            forget the balance history behind the chart\n"
           "  auto-refresh on|off      switch refreshing on a timer on or off\n"
           "  interval " +
           intervalChoices() +
           "\n"
           "                           set the seconds between automatic refreshes\n"
           "  notifications on|off|status\n"
           "                           notify when the balance falls low, or not\n"
           "  autostart on|off|status  start the desktop app at login, or not\n\n"
           "Options:\n"
           "  --demo   a simulated account on a local server, with settings and key kept\n"
           "           in memory: nothing of yours is read or written\n"
           "  --help   this page; 'quorvane COMMAND --help' explains a command\n\n"
           "Output goes to standard output, messages to standard error. Exit status: 0\n"
           "when the command did what was asked, 1 when it could not, 2 for a usage\n"
           "error. Settings live in $XDG_CONFIG_HOME/Quorvane/Quorvane.conf.\n";
}

namespace {

using Page = std::pair<std::string_view, std::string (*)()>;

// In the overview's order.
constexpr std::array<Page, 11> kPages = {{
    {"status", statusPage},
    {"summary", summaryPage},
    {"menu", menuPage},
    {"card", cardPage},
    {"key", keyPage},
    {"baseline", baselinePage},
    {"history", historyPage},
    {"auto-refresh", autoRefreshPage},
    {"interval", intervalPage},
    {"notifications", notificationsPage},
    {"autostart", autostartPage},
}};

} // namespace

std::vector<std::string_view> CommandHelp::commands() {
    std::vector<std::string_view> names;
    names.reserve(kPages.size());
    for (const auto& page : kPages) {
        names.push_back(page.first);
    }
    return names;
}

std::optional<std::string> CommandHelp::forCommand(std::string_view command) {
    for (const auto& [name, page] : kPages) {
        if (name == command) {
            return page();
        }
    }
    return std::nullopt;
}

} // namespace quorvane
