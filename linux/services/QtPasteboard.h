// The desktop clipboard through QClipboard, written as plain text, or through wl-copy where Wayland refuses
// it.
#pragma once

#include "platform/Pasteboard.h"

#include <string>

namespace quorvane {

// Needs a QGuiApplication. Writes the clipboard selection only, not the X11
// primary selection: the program copies on a command, not on a text
// selection. On X11 the text stays available only while the program runs,
// unless a clipboard manager takes it over.
//
// A Wayland compositor takes the clipboard only from the client that has the
// focus, and a command chosen in a panel's menu leaves the focus with the
// panel: Qt's offer is then refused without a word. So on Wayland, while no
// window of the app has the focus, the text goes to wl-copy.
class QtPasteboard : public Pasteboard {
public:
    explicit QtPasteboard(bool wayland = false);

    void clearContents() override;
    // The text is UTF-8; bytes that are not become U+FFFD.
    void writeString(const std::string& text) override;

private:
    // On Wayland with no window of the app focused.
    bool refusedByTheCompositor() const;

    bool m_wayland;
    bool m_toldOfMissingTool = false;
};

} // namespace quorvane
