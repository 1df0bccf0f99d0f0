// The single holder of the program's run-time state and the target of every menu command.
#pragma once

#include "app/Platform.h"
#include "balance/AutoRefreshSettings.h"
#include "balance/BalanceRequest.h"
#include "balance/BalanceResponse.h"
#include "keychain/KeychainStore.h"
#include "menu/CardFactory.h"
#include "menu/LowBalanceNotice.h"
#include "menu/MenuBuilder.h"
#include "menu/StatusTitle.h"
#include "platform/Defaults.h"
#include "tracking/BalanceHistory.h"
#include "tracking/RefreshFacts.h"
#include "tracking/SpendBaselines.h"

#include <functional>
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
    // What the key dialog's Save does, for a key the user gave elsewhere (the
    // command line reads it before the program starts); `key` is already judged
    // by KeyDialog::acceptedText.
    void saveAPIKey(const std::string& key);
    // Whether a fall of the shown balance to low is told with a notification;
    // set from the command line, stored, on by default.
    bool lowBalanceNotificationsEnabled() const;
    void setLowBalanceNotificationsEnabled(bool enabled);

    // Called after every change of the state below, once the menu is rebuilt:
    // the one moment a watcher (the command line waiting for a refresh) needs.
    void setStateListener(std::function<void()> listener);

    // Read-only views of the state, for shells, the command line and tests.
    const std::string& appMark() const { return m_appMark; }
    const std::vector<MenuItem>& menu() const { return m_menu; }
    const std::optional<BalanceResponse>& lastResponse() const { return m_lastResponse; }
    const std::optional<std::string>& lastError() const { return m_lastError; }
    const std::optional<Timestamp>& lastUpdatedAt() const { return m_lastUpdatedAt; }
    bool isRefreshing() const { return m_isRefreshing; }
    bool hasRefreshTimer() const { return m_refreshTimer != nullptr; }
    bool autoRefreshEnabled() const;
    std::string refreshIntervalLabel() const;
    std::string balanceSummary() const;
    // The program's named queries: pure, or reading the stores without changing them.
    std::optional<BalanceInfo> preferredBalance(const BalanceResponse& response) const;
    std::string format(const Decimal& amount, const std::string& currency) const;
    std::string currentDayKey() const;
    Decimal spentToday(const Decimal& current, const std::string& currency) const;
    Decimal spentSinceBaseline(const Decimal& current, const std::string& currency) const;
    std::vector<BalancePoint> allHistory() const;
    std::vector<BalancePoint> history(const std::string& currency) const;
    MenuItem dashboardItem(const BalanceResponse& response) const;
    MenuItem statusCard(const std::string& title, const std::string& subtitle,
                        const std::string& detail) const;
    std::string lastUpdatedText() const;

private:
    // The program's named operations; the commands above are made of them.
    void refreshBalance();
    void finishRefresh(RefreshOutcome outcome);
    void setTitle(const StatusTitle& title);
    void updateFacts();
    void updateStatusTitle(const RefreshFacts& facts);
    void noticeLowBalance(const RefreshFacts& facts);
    double currentRefreshInterval() const;
    void configureAutoRefresh();
    void updateBaselinesIfNeeded(const BalanceResponse& response);
    void resetBaselines();
    void recordHistory(const BalanceResponse& response);
    void rebuildMenu();

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
    std::optional<RefreshFacts> m_facts;

    // Services and collaborators.
    const Platform m_platform;
    const std::string m_apiBaseUrl;
    AutoRefreshSettings m_autoRefresh;
    SpendBaselines m_baselines;
    BalanceHistory m_history;
    LowBalanceNotice m_lowBalance;
    CardFactory m_cards;
    MenuBuilder m_menuBuilder;
    // Callbacks that outlive the delegate (a reply or a timer fire arriving
    // late) hold this weakly and do nothing once it is gone.
    std::shared_ptr<AppDelegate*> m_self;
    std::function<void()> m_stateListener;
};

} // namespace quorvane
