#include "chart/ChartModel.h"

#include <utility>

namespace quorvane {

ChartModel::ChartModel(std::vector<BalancePoint> points, const NamedColor& accentColor,
                       const Formatter& formatter, std::string timeZoneId)
    : m_points(std::move(points))
    , m_accentColor(accentColor)
    , m_texts(formatter, std::move(timeZoneId)) {}

std::optional<std::string> ChartModel::toolTip(std::optional<std::int64_t> index) const {
    return m_texts.tooltipText(m_points, index);
}

std::string ChartModel::bubbleText(std::int64_t index) const {
    return m_texts.compactTooltipText(m_points.at(static_cast<std::size_t>(index)));
}

} // namespace quorvane
