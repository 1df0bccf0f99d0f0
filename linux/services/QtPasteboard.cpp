#include "services/QtPasteboard.h"

#include "services/ClipboardTool.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QString>

#include <cstdio>
#include <optional>

namespace quorvane {

QtPasteboard::QtPasteboard(bool wayland)
    : m_wayland(wayland) {}

bool QtPasteboard::refusedByTheCompositor() const {
    return m_wayland && QGuiApplication::focusWindow() == nullptr;
}

void QtPasteboard::clearContents() {
    if (!refusedByTheCompositor()) {
        QGuiApplication::clipboard()->clear(QClipboard::Clipboard);
    }
}

void QtPasteboard::writeString(const std::string& text) {
    if (refusedByTheCompositor()) {
        const std::optional<ClipboardTool> tool = ClipboardTool::installedFor({true, false});
        if (tool) {
            const std::string error = tool->copy(text);
            if (error.empty()) {
                return;
            }
            std::fprintf(stderr, "quorvane: %s\n", error.c_str());
        } else if (!m_toldOfMissingTool) {
            m_toldOfMissingTool = true;
            std::fprintf(stderr, "quorvane: copying from the panel's menu on Wayland needs wl-copy "
                                 "(the wl-clipboard package); trying without it\n");
        }
    }
    QGuiApplication::clipboard()->setText(QString::fromStdString(text), QClipboard::Clipboard);
}

} // namespace quorvane
