// A formatter with plain, predictable texts, or none at all, for code that only passes texts along.
#pragma once

#include "platform/Formatter.h"

#include <optional>
#include <string>

namespace quorvane {

// With answers on, currency() gives "<code>:<plain decimal>/<max digits>", so a
// test sees exactly what it was asked; with answers off it gives nothing, as a
// locale formatter does for a code it cannot use.
class StubFormatter : public Formatter {
public:
    explicit StubFormatter(bool answers = true)
        : m_answers(answers) {}

    std::optional<std::string> currency(const Decimal& amount, const std::string& code,
                                        int maxFractionDigits) const override {
        if (!m_answers) {
            return std::nullopt;
        }
        return code + ":" + amount.toString() + "/" + std::to_string(maxFractionDigits);
    }

    std::optional<std::string> decimal(const Decimal& amount, int maxFractionDigits) const override {
        if (!m_answers) {
            return std::nullopt;
        }
        return amount.toString() + "/" + std::to_string(maxFractionDigits);
    }

    std::string dayKey(Timestamp, const std::string&) const override { return "2024-01-01"; }

    std::string dateTime(Timestamp, DateStyle, TimeStyle, const std::string&) const override {
        return "date and time";
    }

    std::string relativeTime(Timestamp, Timestamp) const override { return "a moment ago"; }

private:
    bool m_answers;
};

} // namespace quorvane
