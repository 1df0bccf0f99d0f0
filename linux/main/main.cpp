// quorvane: the desktop app without arguments, one command with them.
#include "cli/ClipboardHolder.h"
#include "cli/CommandLine.h"
#include "cli/CommandSession.h"
#include "cli/CommandSet.h"
#include "main/DesktopApp.h"
#include "main/StateBackend.h"
#include "services/LinuxServices.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGuiApplication>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace quorvane;

// Qt ends the process on a fatal message (a display it cannot open, for one)
// with an abort and a core dump; a user should get one line and a status.
[[noreturn]] void reportFatal(const QString& message) {
    const QString firstLine = message.section(QLatin1Char('\n'), 0, 0);
    std::fprintf(stderr, "quorvane: %s\n", firstLine.toLocal8Bit().constData());
    std::fflush(stderr);
    std::_Exit(Command::kNotDone);
}

// True for Qt's Wayland client saying it has no buffer integration named
// "none": the app chose shared-memory buffers itself (makeApplication).
bool isChosenBufferIntegration(const QMessageLogContext& context, const QString& message) {
    return qstrcmp(context.category, "qt.qpa.wayland") == 0 &&
           qgetenv("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION") == "none" &&
           (message.startsWith(QLatin1String("Failed to load client buffer integration")) ||
            message.startsWith(QLatin1String("Available client buffer integrations")));
}

// The desktop app passes Qt's warnings on, as any desktop program does.
void reportAppMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtFatalMsg) {
        reportFatal(message);
    }
    if (type != QtDebugMsg && !isChosenBufferIntegration(context, message)) {
        std::fprintf(stderr, "%s\n", qFormatLogMessage(type, context, message).toLocal8Bit().constData());
    }
}

// A command's standard error is for its own messages, which scripts read:
// what Qt says in passing (a platform plugin that cannot raise an offscreen
// tooltip, a runtime folder it had to pick) stays out of it. A failure that
// matters reaches the command as a refresh error or a result it reports.
void reportCommandMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtFatalMsg) {
        reportFatal(message);
    }
    if (type == QtCriticalMsg) {
        std::fprintf(stderr, "%s\n", qFormatLogMessage(type, context, message).toLocal8Bit().constData());
    }
}

bool hasDisplay() {
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// Only what the command needs: most commands need no display at all, the
// card draws widgets (offscreen unless asked otherwise) and the clipboard's
// holder needs the desktop's clipboard.
std::unique_ptr<QCoreApplication> makeApplication(CommandName command, int& argc, char** argv) {
    switch (command) {
    case CommandName::DesktopApp: {
        // Every window is drawn by the CPU, yet Qt's Wayland client loads EGL
        // with the first window shown, and with it Mesa and (where rendering
        // is in software) LLVM: some 50 MB resident for nothing. Shared-memory
        // buffers show the same pixels. Someone who sets it knows better.
        if (!qEnvironmentVariableIsSet("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION")) {
            qputenv("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none");
        }
        auto app = std::make_unique<QApplication>(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        // Wayland compositors and panels know the app's windows by this name,
        // and show the other when the desktop entry is not installed.
        QGuiApplication::setDesktopFileName(QStringLiteral("app.quorvane.Quorvane"));
        QGuiApplication::setApplicationDisplayName(QStringLiteral("Quorvane"));
        return app;
    }
    case CommandName::Card:
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        return std::make_unique<QApplication>(argc, argv);
    case CommandName::HoldClipboard:
        return std::make_unique<QGuiApplication>(argc, argv);
    default:
        return std::make_unique<QCoreApplication>(argc, argv);
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const ParsedCommandLine parsed = CommandLine::parse(arguments);
    if (parsed.outcome == ParsedCommandLine::Outcome::Help) {
        std::cout << parsed.text;
        return Command::kDone;
    }
    if (parsed.outcome == ParsedCommandLine::Outcome::UsageError) {
        std::cerr << parsed.text << '\n';
        return Command::kUsage;
    }
    const Invocation& invocation = parsed.invocation;
    if (invocation.command == CommandName::DesktopApp && !hasDisplay()) {
        std::cerr << "quorvane: no display (neither DISPLAY nor WAYLAND_DISPLAY is set) for the desktop app; "
                     "'quorvane status' and the other commands work without one\n";
        return Command::kNotDone;
    }

    qInstallMessageHandler(invocation.command == CommandName::DesktopApp ? reportAppMessage
                                                                         : reportCommandMessage);
    std::unique_ptr<QCoreApplication> application = makeApplication(invocation.command, argc, argv);
    // Qt has set every category of the C locale to the user's; number
    // conversions anywhere in the process must keep reading and writing a period.
    std::setlocale(LC_NUMERIC, "C");

    if (invocation.command == CommandName::HoldClipboard) {
        return ClipboardHolder::run(STDIN_FILENO, STDOUT_FILENO);
    }

    // The services and the state are made once, here, and only when the run
    // needs them: "autostart" opens no store at all.
    std::unique_ptr<LinuxServices> services;
    std::unique_ptr<StateBackend> backend;
    const auto openState = [&]() -> bool {
        services = std::make_unique<LinuxServices>();
        std::string error;
        backend = invocation.demo ? StateBackend::forDemo(services->clock(), services->formatter(), error)
                                  : StateBackend::forUser(std::cerr, error);
        if (!backend) {
            std::cerr << "quorvane: " << error << '\n';
        }
        return backend != nullptr;
    };
    if (invocation.command == CommandName::DesktopApp) {
        if (!openState()) {
            return Command::kNotDone;
        }
        DesktopApp app(*services, backend->stores());
        return app.run();
    }

    const CommandSet commands;
    const Command* command = commands.forName(invocation.command);
    if (command == nullptr) {
        return Command::kUsage;
    }
    CommandIo io{std::cout, std::cerr, QCoreApplication::applicationFilePath().toStdString(),
                 [&]() -> std::unique_ptr<CommandSession> {
                     if (!openState()) {
                         return nullptr;
                     }
                     return std::make_unique<CommandSession>(*services, backend->stores(), std::cout);
                 }};
    const int status = command->execute(invocation, io);
    std::cout.flush();
    return status;
}
