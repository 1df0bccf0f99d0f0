#include "app/AppDelegate.h"

#include "balance/MoneyFormat.h"
#include "balance/PreferredBalance.h"
#include "menu/BalanceSummary.h"
#include "menu/KeyDialog.h"
#include "menu/StatusTitle.h"

namespace quorvane {

AppDelegate::AppDelegate(const Platform& platform, std::string apiBaseUrl)
    : m_appMark(StatusTitle::kAppMark)
    , m_statusItem(platform.statusItem)
    , m_keychain(platform.secrets)
    , m_defaults(platform.settings)
    , m_platform(platform)
    , m_apiBaseUrl(std::move(apiBaseUrl))
    , m_autoRefresh(m_defaults)
    , m_baselines(m_defaults, platform.clock, platform.formatter)
    , m_history(m_defaults, platform.clock)
    , m_lowBalance(m_defaults, platform.formatter)
    , m_cards(m_appMark, platform.formatter, platform.clock, m_history, m_autoRefresh)
    , m_menuBuilder(m_appMark, platform.formatter, m_autoRefresh, m_cards)
    , m_self(std::make_shared<AppDelegate*>(this)) {}

void AppDelegate::applicationDidFinishLaunching() {
    m_platform.application.setAccessoryPolicy();
    setTitle(StatusTitle::of(StatusTitle::State::Launched, m_appMark));
    if (m_statusItem.hasButton()) {
        m_statusItem.setToolTip(std::string(StatusTitle::kToolTip));
    }
    m_statusItem.attachMenu();
    rebuildMenu();
    refreshBalance();
    configureAutoRefresh();
}

void AppDelegate::setTitle(const StatusTitle& title) {
    if (m_statusItem.hasButton()) {
        m_statusItem.setTitle(title);
    }
}

// ---- Balance ----

void AppDelegate::refreshBalance() {
    // Dropped, never queued: the request in flight will rebuild everything.
    if (m_isRefreshing) {
        return;
    }
    const std::optional<std::string> key = m_keychain.read();
    if (!key || key->empty()) {
        m_lastResponse.reset();
        m_lastError.reset();
        updateFacts();
        setTitle(StatusTitle::of(StatusTitle::State::NoKey, m_appMark));
        rebuildMenu();
        return;
    }
    m_isRefreshing = true;
    setTitle(StatusTitle::of(StatusTitle::State::Refreshing, m_appMark));
    rebuildMenu();

    std::weak_ptr<AppDelegate*> self = m_self;
    m_platform.http.get(BalanceRequest::make(m_apiBaseUrl, *key), [self,
                                                                   key = *key](const HttpResult& result) {
        if (auto alive = self.lock()) {
            AppDelegate& delegate = **alive;
            delegate.finishRefresh(BalanceRequest::interpret(result, key, delegate.m_platform.textSegmenter));
        }
    });
}

void AppDelegate::finishRefresh(RefreshOutcome outcome) {
    if (outcome.response) {
        m_lastResponse = std::move(outcome.response);
        m_lastError.reset();
        m_lastUpdatedAt = m_platform.clock.now();
        updateBaselinesIfNeeded(*m_lastResponse);
        recordHistory(*m_lastResponse);
        updateFacts();
        updateStatusTitle(*m_facts);
        noticeLowBalance(*m_facts);
    } else {
        m_lastResponse.reset();
        m_lastError = std::move(outcome.error);
        updateFacts();
        setTitle(StatusTitle::of(StatusTitle::State::Failed, m_appMark));
    }
    m_isRefreshing = false;
    rebuildMenu();
}

void AppDelegate::updateFacts() {
    if (m_lastResponse) {
        m_facts = RefreshFacts::of(*m_lastResponse, m_baselines, m_lastUpdatedAt);
    } else {
        m_facts.reset();
    }
}

void AppDelegate::updateStatusTitle(const RefreshFacts& facts) {
    setTitle(StatusTitle::forFacts(facts, m_appMark, m_platform.formatter));
}

void AppDelegate::noticeLowBalance(const RefreshFacts& facts) {
    if (m_platform.notifier == nullptr) {
        return;
    }
    if (const std::optional<Notification> notification = m_lowBalance.afterRefresh(facts)) {
        m_platform.notifier->notify(*notification);
    }
}

bool AppDelegate::lowBalanceNotificationsEnabled() const {
    return m_lowBalance.enabled();
}

void AppDelegate::setLowBalanceNotificationsEnabled(bool enabled) {
    m_lowBalance.setEnabled(enabled);
}

std::optional<BalanceInfo> AppDelegate::preferredBalance(const BalanceResponse& response) const {
    return quorvane::preferredBalance(response);
}

std::string AppDelegate::format(const Decimal& amount, const std::string& currency) const {
    return formatMoney(m_platform.formatter, amount, currency);
}

// ---- Auto-refresh ----

bool AppDelegate::autoRefreshEnabled() const {
    return m_autoRefresh.autoRefreshEnabled();
}

double AppDelegate::currentRefreshInterval() const {
    return m_autoRefresh.currentRefreshInterval();
}

std::string AppDelegate::refreshIntervalLabel() const {
    return m_autoRefresh.refreshIntervalLabel();
}

void AppDelegate::configureAutoRefresh() {
    if (m_refreshTimer) {
        m_refreshTimer->invalidate();
        m_refreshTimer.reset();
    }
    if (!autoRefreshEnabled()) {
        return;
    }
    std::weak_ptr<AppDelegate*> self = m_self;
    m_refreshTimer = m_platform.timers.scheduleRepeating(currentRefreshInterval(), [self] {
        if (auto alive = self.lock()) {
            (*alive)->refreshBalance();
        }
    });
}

// ---- Spend and history ----

void AppDelegate::updateBaselinesIfNeeded(const BalanceResponse& response) {
    m_baselines.updateBaselinesIfNeeded(response);
}

void AppDelegate::resetBaselines() {
    m_baselines.resetBaselines();
    // The spend shown until the next answer starts again from nothing.
    updateFacts();
}

std::string AppDelegate::currentDayKey() const {
    return m_baselines.currentDayKey();
}

Decimal AppDelegate::spentToday(const Decimal& current, const std::string& currency) const {
    return m_baselines.spentToday(current, currency);
}

Decimal AppDelegate::spentSinceBaseline(const Decimal& current, const std::string& currency) const {
    return m_baselines.spentSinceBaseline(current, currency);
}

std::vector<BalancePoint> AppDelegate::history(const std::string& currency) const {
    return m_history.history(currency);
}

std::vector<BalancePoint> AppDelegate::allHistory() const {
    return m_history.allHistory();
}

void AppDelegate::recordHistory(const BalanceResponse& response) {
    m_history.recordHistory(response);
}

// ---- Menu, cards and summary ----

void AppDelegate::rebuildMenu() {
    MenuState state{m_facts, m_lastError, m_isRefreshing, m_keychain.read().has_value()};
    m_menu = m_menuBuilder.build(state);
    m_statusItem.menuDidChange(m_menu);
    if (m_stateListener) {
        m_stateListener();
    }
}

void AppDelegate::setStateListener(std::function<void()> listener) {
    m_stateListener = std::move(listener);
}

MenuItem AppDelegate::dashboardItem(const BalanceResponse& response) const {
    return MenuItem::cardItem(m_cards.dashboard(RefreshFacts::of(response, m_baselines, m_lastUpdatedAt)));
}

MenuItem AppDelegate::statusCard(const std::string& title, const std::string& subtitle,
                                 const std::string& detail) const {
    return MenuItem::cardItem(m_cards.status(title, subtitle, detail));
}

std::string AppDelegate::lastUpdatedText() const {
    return m_cards.lastUpdatedText(m_lastUpdatedAt);
}

std::string AppDelegate::balanceSummary() const {
    return BalanceSummary::text(m_facts, m_lastError, m_platform.formatter);
}

// ---- Menu commands ----

void AppDelegate::refreshClicked() {
    refreshBalance();
}

void AppDelegate::toggleAutoRefreshClicked() {
    m_autoRefresh.toggleAutoRefresh();
    configureAutoRefresh();
    rebuildMenu();
}

void AppDelegate::refreshIntervalClicked(std::int64_t tag) {
    m_autoRefresh.setRefreshInterval(tag);
    configureAutoRefresh();
    rebuildMenu();
}

void AppDelegate::setAPIKeyClicked() {
    m_platform.application.activateIgnoringOtherApps();
    const AlertResponse answer =
        m_platform.alert.runModal(KeyDialog::request(m_keychain.read().value_or("")));
    const std::optional<std::string> key = KeyDialog::acceptedKey(answer);
    if (key) {
        saveAPIKey(*key);
    }
}

void AppDelegate::saveAPIKey(const std::string& key) {
    m_keychain.save(key);
    resetBaselines();
    refreshBalance();
}

void AppDelegate::removeAPIKeyClicked() {
    m_keychain.deleteItem();
    m_lastResponse.reset();
    m_lastError.reset();
    m_lastUpdatedAt.reset();
    updateFacts();
    setTitle(StatusTitle::of(StatusTitle::State::Launched, m_appMark));
    rebuildMenu();
}

void AppDelegate::resetBaselineClicked() {
    resetBaselines();
    refreshBalance();
}

void AppDelegate::clearHistoryClicked() {
    m_history.clear();
    rebuildMenu();
}

void AppDelegate::copySummaryClicked() {
    const std::string summary = balanceSummary();
    m_platform.pasteboard.clearContents();
    m_platform.pasteboard.writeString(summary);
}

void AppDelegate::openBillingClicked() {
    m_platform.workspace.openUrl(std::string(kBillingUrl));
}

void AppDelegate::quitClicked() {
    m_platform.application.terminate();
}

void AppDelegate::perform(MenuCommand command, std::int64_t tag) {
    switch (command) {
    case MenuCommand::None:
        return;
    case MenuCommand::Refresh:
        return refreshClicked();
    case MenuCommand::CopySummary:
        return copySummaryClicked();
    case MenuCommand::ToggleAutoRefresh:
        return toggleAutoRefreshClicked();
    case MenuCommand::RefreshInterval:
        return refreshIntervalClicked(tag);
    case MenuCommand::SetAPIKey:
        return setAPIKeyClicked();
    case MenuCommand::ResetBaseline:
        return resetBaselineClicked();
    case MenuCommand::ClearHistory:
        return clearHistoryClicked();
    case MenuCommand::RemoveAPIKey:
        return removeAPIKeyClicked();
    case MenuCommand::OpenBilling:
        return openBillingClicked();
    case MenuCommand::Quit:
        return quitClicked();
    }
}

} // namespace quorvane
