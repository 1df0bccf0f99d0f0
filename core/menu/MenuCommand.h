// The commands a menu item can send to the delegate, and their selector names.
#pragma once

#include <string_view>

namespace quorvane {

enum class MenuCommand {
    None,
    Refresh,
    CopySummary,
    ToggleAutoRefresh,
    RefreshInterval,
    SetAPIKey,
    ResetBaseline,
    ClearHistory,
    RemoveAPIKey,
    OpenBilling,
    Quit,
};

// The handler's selector as the delegate exposes it; a trailing colon means
// the handler receives the chosen item (and reads its tag).
constexpr std::string_view commandSelector(MenuCommand command) {
    switch (command) {
    case MenuCommand::None:
        return "";
    case MenuCommand::Refresh:
        return "refreshClicked";
    case MenuCommand::CopySummary:
        return "copySummaryClicked";
    case MenuCommand::ToggleAutoRefresh:
        return "toggleAutoRefreshClicked";
    case MenuCommand::RefreshInterval:
        return "refreshIntervalClicked:";
    case MenuCommand::SetAPIKey:
        return "setAPIKeyClicked";
    case MenuCommand::ResetBaseline:
        return "resetBaselineClicked";
    case MenuCommand::ClearHistory:
        return "clearHistoryClicked";
    case MenuCommand::RemoveAPIKey:
        return "removeAPIKeyClicked";
    case MenuCommand::OpenBilling:
        return "openBillingClicked";
    case MenuCommand::Quit:
        return "quitClicked";
    }
    return "";
}

} // namespace quorvane
