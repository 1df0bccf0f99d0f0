#include "menu/MenuTextRenderer.h"

namespace quorvane {

namespace {

void renderCard(const Card& card, const std::string& indent, std::string& out) {
    out += indent + (card.kind == Card::Kind::Dashboard ? "[card dashboard]\n" : "[card status]\n");
    for (const CardSubview& subview : card.subviews) {
        if (const auto* label = std::get_if<CardLabel>(&subview)) {
            out += indent + "  " + label->text + "\n";
        } else {
            const auto& chart = std::get<UsageChartView>(subview);
            out += indent + "  [chart " + std::to_string(chart.points().size()) + " points]\n";
        }
    }
}

void renderItems(const std::vector<MenuItem>& items, const std::string& indent, std::string& out) {
    for (const MenuItem& item : items) {
        switch (item.kind) {
        case MenuItem::Kind::Card:
            if (item.card) {
                renderCard(*item.card, indent, out);
            }
            break;
        case MenuItem::Kind::Separator:
            out += indent + "---\n";
            break;
        case MenuItem::Kind::Informational:
            out += indent + item.title + "\n";
            break;
        case MenuItem::Kind::Command:
            out += indent + item.title +
                   (item.keyEquivalent.empty() ? "" : "  (" + item.keyEquivalent + ")") + "\n";
            break;
        case MenuItem::Kind::Choice:
            out += indent + (item.checked ? "\xE2\x9C\x93 " : "  ") + item.title + "\n";
            break;
        case MenuItem::Kind::Submenu:
            out += indent + item.title + " >\n";
            renderItems(item.submenu, indent + "  ", out);
            break;
        }
    }
}

} // namespace

std::string MenuTextRenderer::render(const std::vector<MenuItem>& items) {
    std::string out;
    renderItems(items, "", out);
    return out;
}

} // namespace quorvane
