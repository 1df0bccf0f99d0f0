// The general clipboard, written as plain text.
#pragma once

#include <string>

namespace quorvane {

class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    virtual void clearContents() = 0;
    virtual void writeString(const std::string& text) = 0;
};

} // namespace quorvane
