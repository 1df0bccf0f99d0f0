#include "services/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QString>

namespace quorvane {

void QtPasteboard::clearContents() {
    QGuiApplication::clipboard()->clear(QClipboard::Clipboard);
}

void QtPasteboard::writeString(const std::string& text) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text), QClipboard::Clipboard);
}

} // namespace quorvane
