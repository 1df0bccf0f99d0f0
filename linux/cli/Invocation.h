// What the command line asked for: the desktop app or one command, with its options.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quorvane {

enum class CommandName {
    DesktopApp,
    Status,
    Summary,
    Menu,
    Card,
    KeySet,
    KeyRemove,
    BaselineReset,
    HistoryClear,
    AutoRefresh,
    Interval,
    Autostart,
    Notifications,
    // The detached helper that keeps a copied summary on the clipboard; not for people.
    HoldClipboard,
};

struct Invocation {
    CommandName command = CommandName::DesktopApp;
    // The simulated account with in-memory settings and key.
    bool demo = false;
    // status, menu
    bool json = false;
    // summary
    bool copy = false;
    // card
    std::string pngPath;
    std::optional<std::int64_t> hoverIndex;
    int scale = 2;
    // auto-refresh
    bool autoRefreshOn = true;
    // interval
    std::int64_t intervalSeconds = 0;
    // autostart: "on", "off" or "status"
    std::string autostart;
    // notifications: "on", "off" or "status"
    std::string notifications;
};

// What reading the arguments came to: something to run, a help page, or a usage error.
struct ParsedCommandLine {
    enum class Outcome { Run, Help, UsageError };

    Outcome outcome = Outcome::Run;
    Invocation invocation;
    // The help page for standard output, or the one-line error for standard error.
    std::string text;
};

} // namespace quorvane
