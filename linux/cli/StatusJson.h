// The status line for waybar and similar bars: title, summary as tooltip, and a class to style by.
#pragma once

#include "json/JsonValue.h"

#include <string>
#include <string_view>

namespace quorvane {

class StatusJson {
public:
    // "low" when the title carries the low-balance mark, "error" after a
    // failed refresh, "nokey" without a key, "ok" for everything else.
    static std::string_view className(const std::string& title, const std::string& appMark);

    // {"text":title,"tooltip":summary,"class":className}
    static JsonValue document(const std::string& title, const std::string& appMark,
                              const std::string& summary);
};

} // namespace quorvane
