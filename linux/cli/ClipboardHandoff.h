// The clipboard of a command: keeps the copied text and hands it to a program that outlives the command.
#pragma once

#include "platform/Pasteboard.h"

#include <optional>
#include <string>

namespace quorvane {

// A command exits at once, and on X11 and Wayland a copied text stays
// pasteable only while a program answers for it. So the text goes to the
// desktop's clipboard program (ClipboardTool) when it has one, or else to a
// detached copy of this program started in its holding mode
// (ClipboardHolder), which serves it until another program takes the
// clipboard or its lifetime ends.
class ClipboardHandoff : public Pasteboard {
public:
    void clearContents() override { m_text.reset(); }
    void writeString(const std::string& text) override { m_text = text; }

    // What the program copied last, if anything.
    const std::optional<std::string>& text() const { return m_text; }

    // Hands the text over; "" when it is on the clipboard, else why not, in
    // one line. `holder` is this program's own path, for the holding mode.
    std::string deliver(const std::string& holder) const;

private:
    static std::string startHolder(const std::string& holder, const std::string& text);

    std::optional<std::string> m_text;
};

} // namespace quorvane
