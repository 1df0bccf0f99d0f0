#include "QMenuText.h"

#include "gui/CardWidget.h"
#include "gui/ChartWidget.h"
#include "gui/ElidedLabel.h"

#include <QAction>
#include <QWidgetAction>

namespace quorvane {

namespace {

void renderCard(const QWidget& card, const std::string& indent, std::string& out) {
    out += indent + "[card " + std::to_string(card.width()) + "x" + std::to_string(card.height()) + "]\n";
    for (const QObject* child : card.children()) {
        if (const auto* label = qobject_cast<const ElidedLabel*>(child)) {
            out += indent + "  " + label->fullText().toStdString() + "\n";
        } else if (const auto* chart = qobject_cast<const ChartWidget*>(child)) {
            out += indent + "  [chart " + std::to_string(chart->chart().points().size()) + " points]\n";
        }
    }
}

void renderMenu(const QMenu& menu, const std::string& indent, std::string& out) {
    for (const QAction* action : menu.actions()) {
        if (action->isSeparator()) {
            out += indent + "---\n";
            continue;
        }
        const std::string prefix = action->isEnabled() ? "" : "(disabled) ";
        if (const auto* widgetAction = qobject_cast<const QWidgetAction*>(action)) {
            if (const auto* card = qobject_cast<const CardWidget*>(widgetAction->defaultWidget())) {
                renderCard(*card, indent + prefix, out);
            } else {
                out += indent + prefix + "[widget]\n";
            }
            continue;
        }
        std::string line = indent + prefix;
        if (action->isCheckable()) {
            line += action->isChecked() ? "[x] " : "[ ] ";
        }
        line += action->text().toStdString();
        if (!action->shortcut().isEmpty()) {
            line += "  [" + action->shortcut().toString(QKeySequence::PortableText).toStdString() + "]";
        }
        if (const QMenu* submenu = action->menu()) {
            out += line + " >\n";
            renderMenu(*submenu, indent + "  ", out);
        } else {
            out += line + "\n";
        }
    }
}

} // namespace

std::string QMenuText::render(const QMenu& menu) {
    std::string out;
    renderMenu(menu, "", out);
    return out;
}

} // namespace quorvane
