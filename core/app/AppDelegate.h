// The single holder of the program's run-time state and the target of every menu command.
#pragma once

#include "app/Platform.h"
#include "balance/AutoRefreshSettings.h"
#include "balance/BalanceRequest.h"
#include "balance/BalanceResponse.h"
#include "keychain/KeychainStore.h"
#include "menu/CardFactory.h"
#include "menu/MenuBuilder.h"
#include "platform/Defaults.h"
#include "tracking/BalanceHistory.h"
#include "tracking/SpendBaselines.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// It keeps the operations' names and their order of effects; the work itself
// lives in small collaborators (baselines, history, menu builder, cards,
// title, summary) that are tested on their own. Everything runs on the main
// thread: the only asynchronous step is the wait for the network, whose answer
// arrives through the main loop.
class AppDelegate {
public:
    static constexpr std::string_view kBillingUrl = "https://platform.deepseek.com/usage";

    explicit AppDelegate(const Platform& platform,
                         std::string apiBaseUrl = std::string(BalanceRequest::kDefaultApiBaseUrl));
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    void applicationDidFinishLaunching();

    // Balance.
    void refreshBalance();
    void updateStatusTitle(const BalanceResponse& response);
    std::optional<BalanceInfo> preferredBalance(const BalanceResponse& response) const;
    std::string format(const Decimal& amount, const std::string& currency) const;

    // Auto-refresh.
    bool autoRefreshEnabled() const;
    double currentRefreshInterval() const;
    std::string refreshIntervalLabel() const;
    void configureAutoRefresh();

    // Spend and history.
    std::string currentDayKey() const;
    void updateBaselinesIfNeeded(const BalanceResponse& response);
    Decimal spentToday(const Decimal& current, const std::string& currency) const;
    Decimal spentSinceBaseline(const Decimal& current, const std::string& currency) const;
    void resetBaselines();
    std::vector<BalancePoint> allHistory() const;
    void recordHistory(const BalanceResponse& response);
    std::vector<BalancePoint> history(const std::string& currency) const;

    // Menu, cards and summary.
    void rebuildMenu();
    MenuItem dashboardItem(const BalanceResponse& response) const;
    MenuItem statusCard(const std::string& title, const std::string& subtitle,
                        const std::string& detail) const;
    std::string lastUpdatedText() const;
    std::string balanceSummary() const;

    // Menu commands.
    void refreshClicked();
    void toggleAutoRefreshClicked();
    void refreshIntervalClicked(std::int64_t tag);
    void setAPIKeyClicked();
    void removeAPIKeyClicked();
    void resetBaselineClicked();
    void clearHistoryClicked();
    void copySummaryClicked();
    void openBillingClicked();
    void quitClicked();
    // For shells that route every item through one entry point; `tag` is the
    // chosen item's tag and matters only for the interval choice.
    void perform(MenuCommand command, std::int64_t tag = 0);

    // Read-only views of the state, for shells, the command line and tests.
    const std::string& appMark() const { return m_appMark; }
    const std::vector<MenuItem>& menu() const { return m_menu; }
    const std::optional<BalanceResponse>& lastResponse() const { return m_lastResponse; }
    const std::optional<std::string>& lastError() const { return m_lastError; }
    const std::optional<Timestamp>& lastUpdatedAt() const { return m_lastUpdatedAt; }
    bool isRefreshing() const { return m_isRefreshing; }
    bool hasRefreshTimer() const { return m_refreshTimer != nullptr; }
    const KeychainStore& keychain() const { return m_keychain; }

private:
    void setTitle(const std::string& title);
    void finishRefresh(RefreshOutcome outcome);

    // Fields, in the order the program declares them.
    const std::string m_appMark;
    StatusItem& m_statusItem;
    std::vector<MenuItem> m_menu;
    KeychainStore m_keychain;
    Defaults m_defaults;
    std::unique_ptr<RepeatingTimer> m_refreshTimer;
    std::optional<BalanceResponse> m_lastResponse;
    std::optional<std::string> m_lastError;
    std::optional<Timestamp> m_lastUpdatedAt;
    bool m_isRefreshing = false;

    // Services and collaborators.
    const Platform m_platform;
    const std::string m_apiBaseUrl;
    AutoRefreshSettings m_autoRefresh;
    SpendBaselines m_baselines;
    BalanceHistory m_history;
    CardFactory m_cards;
    MenuBuilder m_menuBuilder;
    // Callbacks that outlive the delegate (a reply or a timer fire arriving
    // late) hold this weakly and do nothing once it is gone.
    std::shared_ptr<AppDelegate*> m_self;
};

} // namespace quorvane
