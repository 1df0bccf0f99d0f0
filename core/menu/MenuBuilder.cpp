#include "menu/MenuBuilder.h"

#include "balance/MoneyFormat.h"
#include "menu/StatusTitle.h"

namespace quorvane {

namespace {

const std::string kDisplayName = "Quorvane";

} // namespace

MenuBuilder::MenuBuilder(const std::string& appMark, const Formatter& formatter,
                         const AutoRefreshSettings& autoRefresh, const CardFactory& cards)
    : m_appMark(appMark)
    , m_formatter(formatter)
    , m_autoRefresh(autoRefresh)
    , m_cards(cards) {}

std::vector<MenuItem> MenuBuilder::build(const MenuState& state) const {
    std::vector<MenuItem> menu;
    addTopSection(menu, state);

    menu.push_back(MenuItem::separator());
    menu.push_back(MenuItem::commandItem("\xF0\x9F\x94\x84 Refresh Now", MenuCommand::Refresh, "r"));
    menu.push_back(MenuItem::commandItem("\xF0\x9F\x93\x8B Copy Summary", MenuCommand::CopySummary, "c"));
    menu.push_back(settingsSubmenu());
    menu.push_back(MenuItem::separator());
    menu.push_back(MenuItem::commandItem("\xE2\x8C\x98 Quit", MenuCommand::Quit, "q"));
    return menu;
}

void MenuBuilder::addTopSection(std::vector<MenuItem>& menu, const MenuState& state) const {
    if (state.facts) {
        menu.push_back(MenuItem::cardItem(m_cards.dashboard(*state.facts)));
        menu.push_back(MenuItem::separator());
        addSummaryLines(menu, *state.facts);
        menu.push_back(detailsSubmenu(*state.facts));
    } else if (state.lastError) {
        menu.push_back(
            MenuItem::cardItem(m_cards.status(kDisplayName, "Could not refresh balance",
                                              std::string(StatusTitle::kLowMark) + " " + *state.lastError)));
    } else if (!state.hasKey) {
        menu.push_back(MenuItem::cardItem(m_cards.status(kDisplayName, "No API key yet",
                                                         "\xF0\x9F\x94\x90 Add your key to start tracking")));
    } else {
        menu.push_back(MenuItem::cardItem(m_cards.status(kDisplayName,
                                                         state.isRefreshing ? "Refreshing..." : "No data yet",
                                                         m_appMark + " Waiting for DeepSeek balance")));
    }
}

void MenuBuilder::addSummaryLines(std::vector<MenuItem>& menu, const RefreshFacts& facts) const {
    const CurrencyFacts* preferred = facts.preferred();
    if (preferred == nullptr) {
        menu.push_back(MenuItem::informational("No balance returned"));
        return;
    }
    const std::string& code = preferred->currency;
    menu.push_back(MenuItem::informational("Today: " + money(preferred->spentToday, code)));
    menu.push_back(MenuItem::informational("Baseline: " + money(preferred->spentSinceBaseline, code)));
    menu.push_back(MenuItem::informational(m_autoRefresh.autoRefreshEnabled()
                                               ? "\xE2\x8F\xB1 Auto-refresh: every " +
                                                     m_autoRefresh.refreshIntervalLabel()
                                               : std::string("\xE2\x8F\xB8 Auto-refresh: off")));
}

MenuItem MenuBuilder::detailsSubmenu(const RefreshFacts& facts) const {
    std::vector<MenuItem> details;
    for (const CurrencyFacts& currency : facts.currencies) {
        const std::string& code = currency.currency;
        details.push_back(MenuItem::informational("Remaining: " + money(currency.remaining, code)));
        details.push_back(MenuItem::informational("Granted: " + money(currency.granted, code)));
        details.push_back(MenuItem::informational("Topped up: " + money(currency.toppedUp, code)));
        details.push_back(MenuItem::informational("Today spent: " + money(currency.spentToday, code)));
        details.push_back(
            MenuItem::informational("Since baseline: " + money(currency.spentSinceBaseline, code)));
        details.push_back(MenuItem::informational(currency.healthy ? "\xF0\x9F\x9F\xA2 Balance looks healthy"
                                                                   : std::string(StatusTitle::kLowMark) +
                                                                         " Low balance warning"));
        details.push_back(MenuItem::separator());
    }
    details.push_back(
        MenuItem::informational(facts.isAvailable ? "API status: ready" : "API status: no balance"));
    details.push_back(MenuItem::informational("Updated: " + m_cards.lastUpdatedText(facts.updatedAt)));
    return MenuItem::submenuItem("Details", std::move(details));
}

MenuItem MenuBuilder::settingsSubmenu() const {
    std::vector<MenuItem> settings;
    settings.push_back(MenuItem::commandItem(m_autoRefresh.autoRefreshEnabled()
                                                 ? "\xE2\x8F\xB1 Auto-refresh: On"
                                                 : "\xE2\x8F\xB8 Auto-refresh: Off",
                                             MenuCommand::ToggleAutoRefresh));
    settings.push_back(refreshIntervalSubmenu());
    settings.push_back(MenuItem::separator());
    settings.push_back(MenuItem::commandItem("Set API Key...", MenuCommand::SetAPIKey, ","));
    settings.push_back(MenuItem::commandItem("Reset Spend Baseline", MenuCommand::ResetBaseline));
    settings.push_back(MenuItem::commandItem("Clear Usage History", MenuCommand::ClearHistory));
    settings.push_back(MenuItem::commandItem("Remove API Key", MenuCommand::RemoveAPIKey));
    settings.push_back(MenuItem::separator());
    settings.push_back(MenuItem::commandItem("Open DeepSeek Billing", MenuCommand::OpenBilling, "b"));
    return MenuItem::submenuItem("Settings", std::move(settings));
}

MenuItem MenuBuilder::refreshIntervalSubmenu() const {
    // A stored value that is not finite or beyond whole numbers matches no
    // choice, which keeps the menu usable.
    const std::optional<std::int64_t> current =
        AutoRefreshSettings::wholeSeconds(m_autoRefresh.currentRefreshInterval());
    std::vector<MenuItem> choices;
    choices.reserve(AutoRefreshSettings::kChoices.size());
    for (const RefreshIntervalChoice& choice : AutoRefreshSettings::kChoices) {
        choices.push_back(
            MenuItem::choice(std::string(choice.label), choice.seconds, current == choice.seconds));
    }
    return MenuItem::submenuItem("Refresh Interval: " + m_autoRefresh.refreshIntervalLabel(),
                                 std::move(choices));
}

std::string MenuBuilder::money(const Decimal& amount, const std::string& currency) const {
    return formatMoney(m_formatter, amount, currency);
}

} // namespace quorvane
