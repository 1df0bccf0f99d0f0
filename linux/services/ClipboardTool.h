// The desktop's own clipboard program (wl-copy, xclip, xsel), which serves a text after its caller moves on.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// On X11 and Wayland the clipboard is not a store: a text stays pasteable
// only while a program answers for it. These programs stay in the background
// serving it. wl-copy also copies without a focused window where the
// compositor offers the data-control protocol (KWin, sway), and makes a
// surface of its own for the focus elsewhere (GNOME), which a program whose
// only face is a panel's menu has no other way to get on Wayland.
class ClipboardTool {
public:
    struct Session {
        bool wayland = false;
        bool x11 = false;
    };
    // A program's full path by name, or "" when it is not installed.
    using Finder = std::function<std::string(std::string_view name)>;

    // The desktop's session as the environment tells it.
    static Session currentSession();
    // wl-copy on Wayland; xclip, then xsel on X11 (Wayland desktops run X11
    // programs too and keep the two clipboards in step).
    static std::optional<ClipboardTool> forSession(const Session& session, const Finder& find);
    // As above, finding the programs on PATH.
    static std::optional<ClipboardTool> installedFor(const Session& session);

    const std::string& program() const { return m_program; }
    const std::vector<std::string>& arguments() const { return m_arguments; }
    // The program's name without its folder.
    std::string name() const;

    // Hands the text over and waits for the program to take it; "" when it
    // is on the clipboard, else why not, in one line.
    std::string copy(const std::string& text) const;

private:
    ClipboardTool(std::string program, std::vector<std::string> arguments);

    std::string m_program;
    std::vector<std::string> m_arguments;
};

} // namespace quorvane
