#include "cli/MenuJson.h"

#include "values/DoubleText.h"

#include <QDateTime>

#include <cmath>

namespace quorvane {

namespace {

// QDateTime holds milliseconds in a 64-bit integer; far beyond any real sample either way.
constexpr double kMaxIsoSeconds = 9.0e12;

JsonValue frame(const Rect& rect) {
    return JsonValue::fromElements({MenuJson::number(rect.x), MenuJson::number(rect.y),
                                    MenuJson::number(rect.width), MenuJson::number(rect.height)});
}

JsonValue label(const CardLabel& label) {
    return JsonValue::fromMembers({
        {"text", JsonValue::fromString(label.text)},
        {"frame", frame(label.frame)},
        {"fontSize", MenuJson::number(label.font.size)},
        {"fontWeight", JsonValue::fromString(std::string(fontWeightText(label.font.weight)))},
        {"color", JsonValue::fromString(std::string(colorNameText(label.color.name)))},
        {"alignment", JsonValue::fromString(label.alignment == TextAlignment::Right ? "right" : "natural")},
    });
}

JsonValue chart(const UsageChartView& chart) {
    std::vector<JsonValue> points;
    for (const BalancePoint& point : chart.points()) {
        const std::optional<std::string> time = MenuJson::isoTimestamp(point.timestamp);
        points.push_back(JsonValue::fromMembers({
            {"timestamp", time ? JsonValue::fromString(*time) : JsonValue()},
            {"currency", JsonValue::fromString(point.currency)},
            {"balance", JsonValue::fromString(point.balance.toString())},
        }));
    }
    return JsonValue::fromMembers({
        {"frame", frame(chart.frame())},
        {"accentColor", JsonValue::fromString(std::string(colorNameText(chart.accentColor().name)))},
        {"points", JsonValue::fromElements(std::move(points))},
    });
}

} // namespace

JsonValue MenuJson::number(double value) {
    if (!std::isfinite(value)) {
        return JsonValue();
    }
    return JsonValue::fromNumberText(DoubleText::shortest(value, DoubleText::Notation::General));
}

std::optional<std::string> MenuJson::isoTimestamp(Timestamp time) {
    const double unixSeconds = time.unixSeconds();
    if (!std::isfinite(unixSeconds) || std::fabs(unixSeconds) > kMaxIsoSeconds) {
        return std::nullopt;
    }
    const auto milliseconds = static_cast<qint64>(std::llround(unixSeconds * 1000.0));
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
    if (!moment.isValid()) {
        return std::nullopt;
    }
    return moment.toString(Qt::ISODateWithMs).toStdString();
}

JsonValue MenuJson::card(const Card& card) {
    std::vector<JsonValue> labels;
    JsonValue chartValue;
    for (const CardSubview& subview : card.subviews) {
        if (const auto* text = std::get_if<CardLabel>(&subview)) {
            labels.push_back(label(*text));
        } else {
            chartValue = chart(std::get<UsageChartView>(subview));
        }
    }
    return JsonValue::fromMembers({
        {"kind", JsonValue::fromString(card.kind == Card::Kind::Dashboard ? "dashboard" : "status")},
        {"width", number(card.size.width)},
        {"height", number(card.size.height)},
        {"labels", JsonValue::fromElements(std::move(labels))},
        {"chart", std::move(chartValue)},
    });
}

JsonValue MenuJson::item(const MenuItem& item) {
    if (item.kind == MenuItem::Kind::Separator) {
        return JsonValue::fromMembers({{"separator", JsonValue::fromBool(true)}});
    }
    if (item.kind == MenuItem::Kind::Card) {
        return JsonValue::fromMembers({{"card", item.card ? card(*item.card) : JsonValue()}});
    }
    const std::string_view selector = commandSelector(item.command);
    std::vector<JsonValue::Member> members{
        {"title", JsonValue::fromString(item.title)},
        {"enabled", JsonValue::fromBool(item.enabled)},
        {"command", selector.empty() ? JsonValue() : JsonValue::fromString(std::string(selector))},
        {"key", JsonValue::fromString(item.keyEquivalent)},
        {"tag", JsonValue::fromNumberText(std::to_string(item.tag))},
        {"state", JsonValue::fromString(item.checked ? "on" : "off")},
    };
    if (item.kind == MenuItem::Kind::Submenu) {
        std::vector<JsonValue> submenu;
        for (const MenuItem& child : item.submenu) {
            submenu.push_back(MenuJson::item(child));
        }
        members.push_back({"submenu", JsonValue::fromElements(std::move(submenu))});
    }
    return JsonValue::fromMembers(std::move(members));
}

JsonValue MenuJson::document(const std::string& title, const std::string& toolTip,
                             const std::vector<MenuItem>& items) {
    std::vector<JsonValue> menu;
    menu.reserve(items.size());
    for (const MenuItem& entry : items) {
        menu.push_back(item(entry));
    }
    return JsonValue::fromMembers({
        {"title", JsonValue::fromString(title)},
        {"toolTip", JsonValue::fromString(toolTip)},
        {"menu", JsonValue::fromElements(std::move(menu))},
    });
}

} // namespace quorvane
