#include "menu/CardFactory.h"

#include "balance/MoneyFormat.h"

#include <utility>
#include <vector>

namespace quorvane {

namespace {

CardLabel label(std::string text, Rect frame, double size, FontWeight weight,
                ColorName color = ColorName::Label) {
    CardLabel result;
    result.text = std::move(text);
    result.frame = frame;
    result.font = Font{size, weight};
    result.color = NamedColor{color, 1.0};
    return result;
}

} // namespace

CardFactory::CardFactory(const std::string& appMark, const Formatter& formatter, const Clock& clock,
                         const BalanceHistory& history, const AutoRefreshSettings& autoRefresh)
    : m_appMark(appMark)
    , m_formatter(formatter)
    , m_clock(clock)
    , m_history(history)
    , m_autoRefresh(autoRefresh) {}

Card CardFactory::dashboard(const RefreshFacts& facts) const {
    const CurrencyFacts* preferred = facts.preferred();

    std::string balanceText = "No balance";
    std::string todayText = "Today -";
    std::vector<BalancePoint> points;
    ColorName accent = ColorName::SystemTeal;
    if (preferred != nullptr) {
        const std::string& code = preferred->currency;
        balanceText = formatMoney(m_formatter, preferred->remaining, code);
        todayText = "Today " + formatMoney(m_formatter, preferred->spentToday, code);
        points = m_history.history(code);
        accent = preferred->healthy ? ColorName::SystemTeal : ColorName::SystemOrange;
    }
    UsageChartView chart(kChartFrame, ChartModel(std::move(points), NamedColor{accent, 1.0}, m_formatter,
                                                 m_clock.timeZoneId()));
    if (preferred != nullptr) {
        chart.setNeedsDisplay();
    }

    const bool ready = facts.isAvailable;
    CardLabel status = label(ready ? "Ready" : "No balance", {178, 131, 130, 18}, 12, FontWeight::Semibold,
                             ready ? ColorName::SystemGreen : ColorName::SystemRed);
    status.alignment = TextAlignment::Right;

    const std::string footer = "Updated " + lastUpdatedText(facts.updatedAt) + " \xE2\x80\xA2 " +
                               m_autoRefresh.refreshIntervalLabel() + " auto-refresh";

    Card card;
    card.kind = Card::Kind::Dashboard;
    card.size = kDashboardSize;
    card.subviews = {
        label(m_appMark + " Quorvane", {18, 158, 290, 22}, 15, FontWeight::Semibold),
        label(balanceText, {18, 122, 150, 34}, 26, FontWeight::Bold),
        label(todayText, {18, 104, 140, 18}, 12, FontWeight::Regular, ColorName::SecondaryLabel),
        status,
        chart,
        label(footer, {18, 17, 292, 16}, 11, FontWeight::Regular, ColorName::TertiaryLabel),
    };
    return card;
}

Card CardFactory::status(const std::string& title, const std::string& subtitle,
                         const std::string& detail) const {
    Card card;
    card.kind = Card::Kind::Status;
    card.size = kStatusSize;
    card.subviews = {
        label(m_appMark + " " + title, {16, 55, 280, 22}, 15, FontWeight::Semibold),
        label(subtitle, {16, 34, 280, 18}, 13, FontWeight::Medium),
        label(detail, {16, 13, 280, 16}, 11, FontWeight::Regular, ColorName::SecondaryLabel),
    };
    return card;
}

std::string CardFactory::lastUpdatedText(const std::optional<Timestamp>& lastUpdatedAt) const {
    if (!lastUpdatedAt) {
        return "never";
    }
    return m_formatter.relativeTime(*lastUpdatedAt, m_clock.now());
}

} // namespace quorvane
