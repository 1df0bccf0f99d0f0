// The clipboard of a command: keeps the copied text and hands it to a program that outlives the command.
#pragma once

#include "platform/Pasteboard.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// On X11 and Wayland the clipboard is not a store: a text stays pasteable only
// while the program that copied it answers for it, or until a clipboard
// manager takes it over, and a command exits at once. So the text goes to
// wl-copy, xclip or xsel when the desktop has one of them (each stays in the
// background serving it), or else to a detached copy of this program started
// in its holding mode (ClipboardHolder), which serves it until another
// program takes the clipboard or its lifetime ends.
class ClipboardHandoff : public Pasteboard {
public:
    struct Tool {
        std::string program;
        std::vector<std::string> arguments;
    };
    struct Session {
        bool wayland = false;
        bool x11 = false;
    };
    // A program's full path by name, or "" when it is not installed.
    using Finder = std::function<std::string(std::string_view name)>;

    void clearContents() override { m_text.reset(); }
    void writeString(const std::string& text) override { m_text = text; }

    // What the program copied last, if anything.
    const std::optional<std::string>& text() const { return m_text; }

    // The desktop's session as the environment tells it.
    static Session currentSession();
    // wl-copy on Wayland; xclip, then xsel on X11 (Wayland desktops run X11
    // programs too and keep the two clipboards in step).
    static std::optional<Tool> toolFor(const Session& session, const Finder& find);

    // Hands the text over; "" when it is on the clipboard, else why not, in
    // one line. `holder` is this program's own path, for the holding mode.
    std::string deliver(const std::string& holder) const;

private:
    static std::string runTool(const Tool& tool, const std::string& text);
    static std::string startHolder(const std::string& holder, const std::string& text);

    std::optional<std::string> m_text;
};

} // namespace quorvane
