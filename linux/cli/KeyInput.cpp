#include "cli/KeyInput.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <termios.h>
#include <unistd.h>

namespace quorvane {

namespace {

// The one piece of state a signal handler can reach: the terminal to put
// back before the signal takes its default course.
struct EchoGuard {
    static inline int s_fd = -1;
    static inline termios s_saved{};

    static void restoreAndReraise(int signal) {
        ::tcsetattr(s_fd, TCSAFLUSH, &s_saved);
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
};

void writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(fd, text.data(), text.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

// Reads until end of input, a line feed when `stopAtLineFeed`, or more than the limit.
KeyReading readBytes(int input, bool stopAtLineFeed) {
    std::string text;
    char buffer[4096];
    for (;;) {
        const std::size_t want = stopAtLineFeed ? 1 : sizeof buffer;
        const ssize_t count = ::read(input, buffer, want);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return {std::nullopt,
                    std::string("could not read the key (") + std::strerror(errno) + "); nothing changed"};
        }
        if (count == 0) {
            break;
        }
        if (stopAtLineFeed && buffer[0] == '\n') {
            break;
        }
        text.append(buffer, static_cast<std::size_t>(count));
        if (text.size() > KeyInput::kMaxBytes) {
            return {std::nullopt, "the key is longer than " + std::to_string(KeyInput::kMaxBytes) +
                                      " bytes; nothing changed"};
        }
    }
    return {std::move(text), {}};
}

} // namespace

KeyReading KeyInput::read(int input, int promptOutput, std::string_view prompt) {
    if (::isatty(input) == 1) {
        return readLineWithoutEcho(input, promptOutput, prompt);
    }
    return readAll(input);
}

KeyReading KeyInput::readAll(int input) {
    return readBytes(input, false);
}

KeyReading KeyInput::readLineWithoutEcho(int input, int promptOutput, std::string_view prompt) {
    termios saved{};
    if (::tcgetattr(input, &saved) != 0) {
        return {std::nullopt, std::string("could not read the key from the terminal (") +
                                  std::strerror(errno) + "); nothing changed"};
    }
    termios quiet = saved;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    quiet.c_lflag |= ECHONL;
    EchoGuard::s_fd = input;
    EchoGuard::s_saved = saved;
    struct sigaction restore {};
    restore.sa_handler = EchoGuard::restoreAndReraise;
    struct sigaction oldInt {};
    struct sigaction oldTerm {};
    struct sigaction oldHup {};
    ::sigaction(SIGINT, &restore, &oldInt);
    ::sigaction(SIGTERM, &restore, &oldTerm);
    ::sigaction(SIGHUP, &restore, &oldHup);

    writeAll(promptOutput, prompt);
    ::tcsetattr(input, TCSAFLUSH, &quiet);
    KeyReading reading = readBytes(input, true);
    ::tcsetattr(input, TCSAFLUSH, &saved);

    ::sigaction(SIGINT, &oldInt, nullptr);
    ::sigaction(SIGTERM, &oldTerm, nullptr);
    ::sigaction(SIGHUP, &oldHup, nullptr);
    return reading;
}

} // namespace quorvane
