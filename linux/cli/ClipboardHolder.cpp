#include "cli/ClipboardHolder.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QString>
#include <QTimer>

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace quorvane {

namespace {

constexpr int kOwnershipCheckMs = 2000;

std::string readAll(int input) {
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t count = ::read(input, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return text;
        }
        text.append(buffer, static_cast<std::size_t>(count));
        if (text.size() > ClipboardHolder::kMaxBytes) {
            text.resize(ClipboardHolder::kMaxBytes);
            return text;
        }
    }
}

// Closing alone is not enough when the descriptor is standard output: the
// slot would be reused by the next file opened.
void closeReady(int ready) {
    const int null = ::open("/dev/null", O_WRONLY);
    if (null >= 0) {
        ::dup2(null, ready);
        ::close(null);
    } else {
        ::close(ready);
    }
}

} // namespace

int ClipboardHolder::run(int input, int ready) {
    const std::string text = readAll(input);
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->setText(QString::fromStdString(text), QClipboard::Clipboard);
    if (!clipboard->ownsClipboard()) {
        closeReady(ready);
        return 1;
    }
    const char byte = 'r';
    const bool told = ::write(ready, &byte, 1) == 1;
    closeReady(ready);
    if (!told) {
        return 1;
    }

    const auto quitWhenTaken = [clipboard] {
        if (!clipboard->ownsClipboard()) {
            QCoreApplication::quit();
        }
    };
    QObject::connect(clipboard, &QClipboard::changed, clipboard, quitWhenTaken);
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, clipboard, quitWhenTaken);
    check.start(kOwnershipCheckMs);
    QTimer::singleShot(kLifetime, clipboard, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    return 0;
}

} // namespace quorvane
