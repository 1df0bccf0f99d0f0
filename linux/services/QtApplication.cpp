#include "services/QtApplication.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QWindow>

namespace quorvane {

namespace {

bool canComeForward(const QWindow* window) {
    Qt::WindowType type = window->type();
    return window->isVisible() && type != Qt::Popup && type != Qt::ToolTip && type != Qt::Desktop;
}

QWindow* windowToActivate() {
    QWindow* focused = QGuiApplication::focusWindow();
    if (focused != nullptr && canComeForward(focused)) {
        return focused;
    }
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        if (canComeForward(window)) {
            return window;
        }
    }
    return nullptr;
}

} // namespace

void QtApplication::setAccessoryPolicy() {}

void QtApplication::activateIgnoringOtherApps() {
    QWindow* window = windowToActivate();
    if (window == nullptr) {
        return;
    }
    window->raise();
    window->requestActivate();
}

void QtApplication::terminate() {
    QCoreApplication::quit();
}

} // namespace quorvane
