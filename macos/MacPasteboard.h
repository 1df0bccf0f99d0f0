// The general pasteboard, written as plain text.
#pragma once

#include "platform/Pasteboard.h"

#include <string>

namespace quorvane {

class MacPasteboard : public Pasteboard {
public:
    void clearContents() override;
    // As the plain-text type, so every app that takes text can paste it.
    void writeString(const std::string& text) override;
};

} // namespace quorvane
