#include "cli/StatusJson.h"

#include "menu/StatusTitle.h"

namespace quorvane {

std::string_view StatusJson::className(const std::string& title, const std::string& appMark) {
    if (title.rfind(StatusTitle::kLowMark, 0) == 0) {
        return "low";
    }
    if (title == StatusTitle::withSuffix(appMark, StatusTitle::kFailedSuffix)) {
        return "error";
    }
    if (title == StatusTitle::withSuffix(appMark, StatusTitle::kNoKeySuffix)) {
        return "nokey";
    }
    return "ok";
}

JsonValue StatusJson::document(const std::string& title, const std::string& appMark,
                               const std::string& summary) {
    return JsonValue::fromMembers({
        {"text", JsonValue::fromString(title)},
        {"tooltip", JsonValue::fromString(summary)},
        {"class", JsonValue::fromString(std::string(className(title, appMark)))},
    });
}

} // namespace quorvane
