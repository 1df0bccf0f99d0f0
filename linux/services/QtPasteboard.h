// The desktop clipboard through QClipboard, written as plain text.
#pragma once

#include "platform/Pasteboard.h"

#include <string>

namespace quorvane {

// Needs a QGuiApplication. Writes the clipboard selection only, not the X11
// primary selection: the program copies on a command, not on a text
// selection. On X11 the text stays available only while the program runs,
// unless a clipboard manager takes it over.
class QtPasteboard : public Pasteboard {
public:
    void clearContents() override;
    // The text is UTF-8; bytes that are not become U+FFFD.
    void writeString(const std::string& text) override;
};

} // namespace quorvane
