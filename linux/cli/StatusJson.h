// The status line for waybar and similar bars: title, summary as tooltip, and a class to style by.
#pragma once

#include "json/JsonValue.h"
#include "menu/StatusTitle.h"

#include <string>
#include <string_view>

namespace quorvane {

class StatusJson {
public:
    // "low" for a balance at or below its threshold, "error" after a failed
    // refresh, "nokey" without a key, "ok" for everything else.
    static std::string_view className(StatusTitle::State state);

    // {"text":title,"tooltip":summary,"class":className}
    static JsonValue document(const StatusTitle& title, const std::string& summary);
};

} // namespace quorvane
