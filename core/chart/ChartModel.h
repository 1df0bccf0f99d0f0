// What the usage chart shows: its samples, its colour and the words for each sample.
#pragma once

#include "chart/ChartTexts.h"
#include "tracking/BalancePoint.h"
#include "values/NamedColor.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// Made with the card, where the formatter and the time zone are at hand, so
// that the views which host the chart need neither. The texts are still
// formatted when asked for, since only the sample under the pointer needs them.
class ChartModel {
public:
    // The formatter outlives the model.
    ChartModel(std::vector<BalancePoint> points, const NamedColor& accentColor, const Formatter& formatter,
               std::string timeZoneId);

    const std::vector<BalancePoint>& points() const { return m_points; }
    const NamedColor& accentColor() const { return m_accentColor; }

    // The sample's full tooltip; nothing for a missing index or one outside the series.
    std::optional<std::string> toolTip(std::optional<std::int64_t> index) const;
    // The value bubble's short line for a sample inside the series.
    std::string bubbleText(std::int64_t index) const;

private:
    std::vector<BalancePoint> m_points;
    NamedColor m_accentColor;
    ChartTexts m_texts;
};

} // namespace quorvane
