#include "gui/MenuRenderer.h"

#include "gui/CardWidget.h"

#include <QAction>
#include <QWidgetAction>

namespace quorvane {

MenuRenderer::MenuRenderer(CommandHandler onCommand)
    : m_onCommand(std::move(onCommand)) {}

QString MenuRenderer::actionText(const std::string& title) {
    QString text = QString::fromStdString(title);
    text.replace(QLatin1Char('&'), QLatin1String("&&"));
    return text;
}

QKeySequence MenuRenderer::shortcut(const std::string& keyEquivalent) {
    if (keyEquivalent.empty()) {
        return QKeySequence();
    }
    const QString key = QString::fromStdString(keyEquivalent).toUpper();
    return QKeySequence(QLatin1String("Ctrl+") + key, QKeySequence::PortableText);
}

void MenuRenderer::render(const std::vector<MenuItem>& items, QMenu& menu) const {
    // clear() deletes the actions the menu owns, the cards' widget actions
    // with their widgets among them; the submenus are children of the menu
    // and go with the next line. Commands reach the delegate queued (see
    // addCommand), so no action or submenu is on the call stack here.
    menu.clear();
    qDeleteAll(menu.findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
    addItems(items, menu, menu);
}

void MenuRenderer::addItems(const std::vector<MenuItem>& items, QMenu& target, QMenu& root) const {
    for (const MenuItem& item : items) {
        switch (item.kind) {
        case MenuItem::Kind::Separator:
            target.addSeparator();
            break;
        case MenuItem::Kind::Card:
            if (item.card) {
                auto* action = new QWidgetAction(&target);
                action->setDefaultWidget(new CardWidget(*item.card));
                target.addAction(action);
            }
            break;
        case MenuItem::Kind::Informational:
            // A line to read: the Mac shows an item without an action greyed,
            // with no highlight, and a click on it leaves the menu open.
            target.addAction(actionText(item.title))->setEnabled(false);
            break;
        case MenuItem::Kind::Command:
        case MenuItem::Kind::Choice:
            addCommand(item, target, root);
            break;
        case MenuItem::Kind::Submenu: {
            // Parented to the root, so the next render finds and deletes it.
            auto* submenu = new QMenu(actionText(item.title), &root);
            addItems(item.submenu, *submenu, root);
            target.addMenu(submenu)->setEnabled(item.enabled);
            break;
        }
        }
    }
}

void MenuRenderer::addCommand(const MenuItem& item, QMenu& target, QMenu& root) const {
    QAction* action = target.addAction(actionText(item.title));
    action->setEnabled(item.enabled);
    action->setShortcut(shortcut(item.keyEquivalent));
    if (item.kind == MenuItem::Kind::Choice) {
        action->setCheckable(true);
        action->setChecked(item.checked);
    }
    // Queued behind the menu's own handling of the click: a command usually
    // rebuilds the menu, which must not delete the action that is still
    // emitting, and the key dialog should open once the menu has closed.
    QObject::connect(
        action, &QAction::triggered, &root,
        [onCommand = m_onCommand, command = item.command, tag = item.tag] {
            if (onCommand) {
                onCommand(command, tag);
            }
        },
        Qt::QueuedConnection);
}

} // namespace quorvane
