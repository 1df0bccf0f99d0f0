#include "cli/StatusJson.h"

namespace quorvane {

std::string_view StatusJson::className(StatusTitle::State state) {
    switch (state) {
    case StatusTitle::State::Low:
        return "low";
    case StatusTitle::State::Failed:
        return "error";
    case StatusTitle::State::NoKey:
        return "nokey";
    case StatusTitle::State::Launched:
    case StatusTitle::State::Refreshing:
    case StatusTitle::State::NoBalance:
    case StatusTitle::State::Healthy:
        break;
    }
    return "ok";
}

JsonValue StatusJson::document(const StatusTitle& title, const std::string& summary) {
    return JsonValue::fromMembers({
        {"text", JsonValue::fromString(title.full())},
        {"tooltip", JsonValue::fromString(summary)},
        {"class", JsonValue::fromString(std::string(className(title.state())))},
    });
}

} // namespace quorvane
