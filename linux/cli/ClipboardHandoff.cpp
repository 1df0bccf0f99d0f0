#include "cli/ClipboardHandoff.h"

#include "cli/CommandLine.h"
#include "services/ClipboardTool.h"

#include <QByteArray>

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane {

namespace {

constexpr int kHolderReadyWaitMs = 10000;

bool writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

std::string ClipboardHandoff::deliver(const std::string& holder) const {
    const std::string text = m_text.value_or("");
    const ClipboardTool::Session session = ClipboardTool::currentSession();
    if (!session.wayland && !session.x11) {
        return "no display to copy to (neither WAYLAND_DISPLAY nor DISPLAY is set); nothing was copied";
    }
    if (const std::optional<ClipboardTool> tool = ClipboardTool::installedFor(session)) {
        return tool->copy(text);
    }
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.startsWith("offscreen") || platform.startsWith("minimal")) {
        return "QT_QPA_PLATFORM=" + CommandLine::quoted(platform.toStdString()) +
               " has no clipboard other programs can read; nothing was copied";
    }
    return startHolder(holder, text);
}

// fork and exec rather than QProcess: the holder must outlive this program,
// and a QProcess ends its child when it is destroyed. Between fork and exec
// the child calls only what is safe in a copy of a threaded process.
std::string ClipboardHandoff::startHolder(const std::string& holder, const std::string& text) {
    int textPipe[2];
    int readyPipe[2];
    if (::pipe2(textPipe, O_CLOEXEC) != 0) {
        return "could not start the clipboard holder; nothing was copied";
    }
    if (::pipe2(readyPipe, O_CLOEXEC) != 0) {
        ::close(textPipe[0]);
        ::close(textPipe[1]);
        return "could not start the clipboard holder; nothing was copied";
    }
    const std::string flag(CommandLine::kHoldClipboardFlag);
    char* const argv[] = {const_cast<char*>(holder.c_str()), const_cast<char*>(flag.c_str()), nullptr};
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        ::dup2(textPipe[0], STDIN_FILENO);
        ::dup2(readyPipe[1], STDOUT_FILENO);
        const int null = ::open("/dev/null", O_WRONLY);
        if (null >= 0) {
            ::dup2(null, STDERR_FILENO);
        }
        if (::chdir("/") != 0) {
            ::_exit(127);
        }
        ::execv(holder.c_str(), argv);
        ::_exit(127);
    }
    ::close(textPipe[0]);
    ::close(readyPipe[1]);
    if (child < 0) {
        ::close(textPipe[1]);
        ::close(readyPipe[0]);
        return "could not start the clipboard holder; nothing was copied";
    }
    const bool sent = writeAll(textPipe[1], text);
    ::close(textPipe[1]);

    // One byte once the holder owns the clipboard; the end of the pipe means it gave up.
    pollfd ready{readyPipe[0], POLLIN, 0};
    char answer = 0;
    const bool owned =
        sent && ::poll(&ready, 1, kHolderReadyWaitMs) == 1 && ::read(readyPipe[0], &answer, 1) == 1;
    ::close(readyPipe[0]);
    if (!owned) {
        ::waitpid(child, nullptr, WNOHANG);
        return "the clipboard could not be taken; nothing was copied";
    }
    return {};
}

} // namespace quorvane
