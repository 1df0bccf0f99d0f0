// Launch at login: the XDG autostart entry that starts the desktop app when the user logs in.
#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

namespace quorvane {

// The entry is $XDG_CONFIG_HOME/autostart/app.quorvane.Quorvane.desktop (or
// ~/.config/autostart/...), which every desktop that follows the XDG
// autostart rules starts at login. It lives on the command line
// because the desktop app's menu is the Mac's, item for item.
class AutostartEntry {
public:
    enum class Action { On, Off, Status };

    static constexpr const char* kFileName = "app.quorvane.Quorvane.desktop";

    // Nothing when neither XDG_CONFIG_HOME nor HOME says where the user's settings are.
    static std::optional<std::filesystem::path> path();

    // The entry that starts `executable` without arguments: the desktop app.
    static std::string text(const std::string& executable);
    // `executable` as an Exec key takes it: quoted when it holds anything but
    // letters, digits and "/._+-", with the desktop entry's escapes.
    static std::string execArgument(const std::string& executable);

    // Carries out the action and says what it did on `out` (or why not on
    // `err`). Exit status 0 when done, 1 when not.
    static int run(Action action, const std::string& executable, std::ostream& out, std::ostream& err);
};

} // namespace quorvane
